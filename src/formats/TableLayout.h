// TableLayout: how a table is laid out, found out from its first lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/Numbers.h"
#include "formats/TableFields.h"
#include "formats/TableText.h"

namespace krv::formats {

struct TableLayout {
    Separator separator = Separator::Blanks;
    NumberFormat numbers;
    // Of each field of a line.
    std::vector<bool> isComplex;
    // One for each field, or none at all.
    std::vector<std::string> names;
    // The first line with values; from 1.
    std::uint64_t firstLine = 1;
    // Something stands in front of the values: a heading or a comment.
    bool hasTextBefore = false;
    // A sentence on lines in front of the values that tell nothing of them; empty without any.
    std::string leftOut;
    // The lines may as well hold one number with a decimal comma each.
    bool isAmbiguous = false;
};

// Throws Error 321 where the first lines are no table.
[[nodiscard]] TableLayout FindTableLayout(const InputFile& file);

// Nothing to be read: empty, or begun with #, % or //.
[[nodiscard]] bool IsCommentLine(std::string_view line) noexcept;

}  // namespace krv::formats
