// The time as the work needs it: a running tick count and the local time of day.
#pragma once

#include <cstdint>

namespace krv::ports {

class Clock {
 public:
    virtual ~Clock() = default;
    // Milliseconds since some fixed moment; never goes back.
    virtual std::uint64_t TickCountMs() = 0;
    // Local time of day in seconds since midnight, 0 to 86399.
    virtual int LocalSecondOfDay() = 0;
};

}  // namespace krv::ports
