// TransferMeter: how much of an array is on its way to the instrument, and how fast.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "ports/desktop/Clock.h"
#include "suite/transport/Transport.h"

namespace krv::cli {

class TransferMeter {
 public:
    // Called with e.g. "12.3 of 134.2 MB, 45.6 MB/s" each time that something was sent, but not
    // more often than it can be read; empty before anything was.
    using Show = std::function<void(const std::string& text)>;

    explicit TransferMeter(ports::Clock& clock) : m_clock(clock) {}
    void OnChange(Show show) { m_show = std::move(show); }

    // An array of so many bytes follows, or nothing more.
    void Begin(std::uint64_t bytes);
    void End() { Begin(0); }
    void Add(std::uint64_t bytes);

 private:
    [[nodiscard]] std::string Text(std::uint64_t now) const;

    ports::Clock& m_clock;
    Show m_show;
    std::uint64_t m_total = 0;
    std::uint64_t m_sent = 0;
    std::uint64_t m_startMs = 0;
    std::uint64_t m_shownMs = 0;
};

// Tells the meter what each transport that is opened from now on sends. The meter outlives them.
void MeterTransports(suite::TransportRegistry& transports, TransferMeter& meter);

}  // namespace krv::cli
