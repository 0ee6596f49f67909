// The machine's clocks.
#pragma once

#include <chrono>

#include "cli/Platform.h"
#include "ports/desktop/Clock.h"

namespace krv::cli {

class SystemClock final : public ports::Clock {
 public:
    std::uint64_t TickCountMs() override {
        const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint64_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
    }
    int LocalSecondOfDay() override { return krv::cli::LocalSecondOfDay(); }
};

}  // namespace krv::cli
