// Patience: how long one goes on waiting for the other side. A wait ends when nothing has come
// through for the length of a limit, and also when only a trickle does: every byte lengthens the
// wait by no more than its time on a very slow line. A transfer therefore ends after the limit and
// the time that all its bytes would take on that line, at the latest. How many these are is for the
// other side to say, so that where it sends them the wait has an end of its own besides.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "ports/suite/InstrumentServer.h"

namespace krv::suite {

class Patience {
 public:
    using Clock = std::chrono::steady_clock;

    // A network may lead to a serial line; this is less than one of 1200 baud carries.
    static constexpr std::int64_t LeastBytesPerSecond = 100;
    // What is taken for a trickle on this line, which is null where there is none: a quarter of
    // what the slowest lines carry, which need ten bits for a byte.
    [[nodiscard]] static std::int64_t LeastRateOf(ports::SerialSession* line) {
        return line == nullptr
                   ? LeastBytesPerSecond
                   : std::clamp<std::int64_t>(line->BaudRate() / 40, 1, LeastBytesPerSecond);
    }

    Patience(std::chrono::milliseconds limit, std::int64_t bytesPerSecond,
             Clock::time_point now = Clock::now())
        : m_limit(limit), m_bytesPerSecond(bytesPerSecond), m_end(now + limit) {}

    // Ends by then, whatever comes through.
    void EndBy(Clock::time_point latest) {
        m_latest = latest;
        m_end = std::min(m_end, m_latest);
    }
    // So many bytes have come through.
    void Moved(std::int64_t bytes, Clock::time_point now = Clock::now()) {
        const std::chrono::milliseconds earned(bytes * 1000 / m_bytesPerSecond);
        m_end = std::min({m_end + earned, now + m_limit, m_latest});
    }
    [[nodiscard]] Clock::time_point End() const { return m_end; }
    [[nodiscard]] bool IsOver(Clock::time_point now = Clock::now()) const { return now > m_end; }

 private:
    std::chrono::milliseconds m_limit;
    std::int64_t m_bytesPerSecond;
    Clock::time_point m_end;
    Clock::time_point m_latest = Clock::time_point::max();
};

}  // namespace krv::suite
