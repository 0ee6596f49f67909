// The automation objects of command bars and add-ins.
#pragma once

#include <memory>

#include "bench/office/windows/BookAutomation.h"
#include "bench/office/windows/MemberCall.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewCommandBars(const std::shared_ptr<BookAutomation>& automation);
[[nodiscard]] _variant_t NewAddIns(const std::shared_ptr<BookAutomation>& automation);

}  // namespace krv::bench
