// The automation objects of COM add-ins.
#pragma once

#include <memory>

#include "bench/shared/windows/ComAddIn.h"
#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewComAddIn(const std::shared_ptr<OfficeAutomation>& automation,
                                     const std::shared_ptr<ComAddIn>& addIn);
[[nodiscard]] _variant_t NewComAddIns(const std::shared_ptr<OfficeAutomation>& automation);

}  // namespace krv::bench
