// Cells and sheets of Excel and the pictures on them, over automation.
#pragma once

#include <memory>

#include "ports/office/Worksheet.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

// Each throws Error 91 when there is no such object, as without an open workbook.
[[nodiscard]] std::shared_ptr<ports::Cell> CellOf(LateBound cell);
[[nodiscard]] std::shared_ptr<ports::Worksheet> WorksheetOf(LateBound sheet);

}  // namespace krv::windows
