#include "cli/TransferMeter.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "common/Numbers.h"
#include "suite/transport/ForwardingTransport.h"

namespace krv::cli {
namespace {

constexpr std::uint64_t ShowIntervalMs = 100;

struct ByteUnit {
    const char* name;
    double bytes;
};
constexpr std::array<ByteUnit, 3> Units{{{"MB", 1e6}, {"kB", 1e3}, {"B", 1}}};

// The largest unit that leaves at least 1.
const ByteUnit& UnitOf(double bytes) {
    const auto fits = [bytes](const ByteUnit& unit) { return bytes >= unit.bytes; };
    const auto unit = std::ranges::find_if(Units, fits);
    return unit == Units.end() ? Units.back() : *unit;
}

// With one decimal, e.g. "134.2"; bytes without.
std::string In(const ByteUnit& unit, double bytes) {
    const int decimals = unit.bytes > 1 ? 1 : 0;
    std::string text = NumberToText(RoundDecimals(bytes / unit.bytes, decimals));
    return decimals > 0 && text.find('.') == std::string::npos ? text + ".0" : text;
}

class MeteredTransport final : public suite::ForwardingTransport {
 public:
    MeteredTransport(std::unique_ptr<suite::Transport> transport, TransferMeter& meter)
        : ForwardingTransport(std::move(transport)), m_meter(meter) {}

    void Send(std::span<const std::byte> bytes, suite::MessagePart part) override {
        ForwardingTransport::Send(bytes, part);
        m_meter.Add(bytes.size());
    }

 private:
    TransferMeter& m_meter;
};

}  // namespace

void TransferMeter::Begin(std::uint64_t bytes) {
    m_total = bytes;
    m_sent = 0;
    m_startMs = m_clock.TickCountMs();
    m_shownMs = 0;
    if (m_show) {
        m_show({});
    }
}

void TransferMeter::Add(std::uint64_t bytes) {
    if (m_total == 0) {
        return;
    }
    // The message around the array has some bytes, too.
    m_sent = std::min(m_sent + bytes, m_total);
    const std::uint64_t now = m_clock.TickCountMs();
    if (m_show && (now - m_shownMs >= ShowIntervalMs || m_sent == m_total)) {
        m_shownMs = now;
        m_show(Text(now));
    }
}

std::string TransferMeter::Text(std::uint64_t now) const {
    const auto sent = static_cast<double>(m_sent);
    const auto seconds = static_cast<double>(std::max<std::uint64_t>(now - m_startMs, 1)) / 1000;
    const auto total = static_cast<double>(m_total);
    const ByteUnit& unit = UnitOf(total);
    const ByteUnit& rateUnit = UnitOf(sent / seconds);
    return In(unit, sent) + " of " + In(unit, total) + ' ' + unit.name + ", " +
           In(rateUnit, sent / seconds) + ' ' + rateUnit.name + "/s";
}

void MeterTransports(suite::TransportRegistry& transports, TransferMeter& meter) {
    transports.InterceptOpening(
        [&meter](const std::string&, const suite::TransportRegistry::OpenCall& open) {
            return std::make_unique<MeteredTransport>(open(), meter);
        });
}

}  // namespace krv::cli
