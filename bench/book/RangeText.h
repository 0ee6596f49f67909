// The text of a cell range, as a spreadsheet's Range(text) takes it: "A1", "$B$10:A1", "A:C",
// "1:3", several of them with commas between, each with the name of a sheet in front if one likes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/book/CellArea.h"

namespace krv::bench {

struct RangeReference {
    // As it stands before the "!"; empty when there is none.
    std::string sheetName;
    // In the order in which they are written; they may overlap.
    std::vector<CellArea> areas;
};

// Nothing when the text is no range: a syntax error, cells beyond the sheet's limits, a defined
// name (a workbook of the bench has none), two sheets, or more than 255 characters.
[[nodiscard]] std::optional<RangeReference> ParseRangeText(std::string_view text);

}  // namespace krv::bench
