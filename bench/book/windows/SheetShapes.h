// The automation objects of the pictures on a worksheet.
#pragma once

#include <memory>

#include "bench/book/windows/BookAutomation.h"
#include "bench/shared/windows/MemberCall.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewSheetShapes(const std::shared_ptr<BookAutomation>& automation,
                                        const std::shared_ptr<Workbook>& book);

}  // namespace krv::bench
