// The spreadsheet application behind the spreadsheet source: only what the download needs of it.
// Every operation throws Error with the application's own description when the application refuses.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "common/Value.h"

namespace krv::ports {

// Any host application object; adapters hand it over without saying which it is.
class HostApplication {
 public:
    virtual ~HostApplication() = default;
};

// The sheet that cells lie on and its workbook, by the names that the user sees.
struct SheetName {
    std::string workbook;
    std::string sheet;

    bool operator==(const SheetName&) const = default;
};

// A cell range. Cells are counted from 0, row by row within the first area.
class Range {
 public:
    virtual ~Range() = default;
    virtual std::int32_t AreaCount() = 0;
    virtual std::int32_t RowCount() = 0;
    virtual std::int32_t ColumnCount() = 0;
    virtual std::int32_t CellCount() = 0;
    // E.g. "$A$1:$A$10".
    virtual std::string Address() = 0;
    virtual SheetName Sheet() = 0;
    // Fills the span with the values of the cells from `firstCell` on; firstCell plus the span's
    // size must not exceed CellCount.
    virtual void ReadValues(std::size_t firstCell, std::span<Value> values) = 0;
    // The address of one cell as the application reports it, e.g. "$A$7".
    virtual std::string CellAddress(std::size_t cell) = 0;
};

class ExcelApplication : public HostApplication {
 public:
    // Resolves a range text; throws Error when the application cannot.
    virtual std::shared_ptr<Range> ResolveRange(const std::string& text) = 0;
    // The current selection; throws Error when something other than cells is selected.
    virtual std::shared_ptr<Range> Selection() = 0;
};

// Finds a running application by its class name ("Excel.Application").
class RunningApplications {
 public:
    virtual ~RunningApplications() = default;
    // The running instance; never starts one. Throws Error when there is none.
    virtual std::shared_ptr<HostApplication> GetRunning(const std::string& className) = 0;
};

}  // namespace krv::ports
