// The automation objects of a workbook and of its worksheet. Both documents are Workbooks.
#pragma once

#include <memory>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] OfficeAutomation::Object NewWorkbookObject(
    const std::shared_ptr<OfficeAutomation>& automation,
    const std::shared_ptr<OfficeDocument>& book);
[[nodiscard]] _variant_t NewWorksheet(const std::shared_ptr<OfficeAutomation>& automation,
                                      const std::shared_ptr<OfficeDocument>& book);

}  // namespace krv::bench
