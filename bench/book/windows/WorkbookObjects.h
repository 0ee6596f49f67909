// The automation objects of workbooks: the collection of open ones, a workbook, and its worksheet.
#pragma once

#include <memory>

#include "bench/book/windows/BookAutomation.h"
#include "bench/shared/windows/MemberCall.h"

namespace krv::bench {

[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> NewWorkbookObject(
    std::shared_ptr<BookAutomation> automation, const std::shared_ptr<Workbook>& book);
[[nodiscard]] _variant_t NewWorkbooks(const std::shared_ptr<BookAutomation>& automation);
[[nodiscard]] _variant_t NewWorksheet(const std::shared_ptr<BookAutomation>& automation,
                                      const std::shared_ptr<Workbook>& book);

}  // namespace krv::bench
