// Tick count and local time of Windows.
#pragma once

#include "ports/desktop/Clock.h"

namespace krv::windows {

class WindowsClock final : public ports::Clock {
 public:
    std::uint64_t TickCountMs() override;
    int LocalSecondOfDay() override;
};

}  // namespace krv::windows
