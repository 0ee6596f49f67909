// The automation objects of command bars and add-ins.
#pragma once

#include <memory>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewCommandBars(const std::shared_ptr<OfficeAutomation>& automation);
[[nodiscard]] _variant_t NewAddIns(const std::shared_ptr<OfficeAutomation>& automation);

}  // namespace krv::bench
