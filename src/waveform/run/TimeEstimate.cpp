#include "waveform/run/TimeEstimate.h"

#include <cmath>

#include "common/Error.h"
#include "common/Text.h"

namespace krv::waveform {
namespace {

// What a connection other than a serial line is taken to carry.
constexpr std::int32_t BytesPerSecond = 87500;

ports::SerialSession* FindSerial(ports::IoSession& session) {
    try {
        return session.Serial();
    } catch (const Error&) {
        return nullptr;
    }
}

double StopBitCount(std::int32_t stopBits) {
    switch (stopBits) {
        case 2:
            return 1.5;
        case 3:
            return 2;
        default:
            return 1;
    }
}

std::string TimeText(std::int32_t seconds, NumberFormat format) {
    if (seconds < 60) {
        return std::to_string(seconds) + " seconds.";
    }
    const int decimals = seconds < 119 ? 2 : 1;
    return NumberToText(RoundDecimals(seconds / 60.0, decimals), format) + " minutes.";
}

}  // namespace

TransferRate ReadTransferRate(ports::IoSession& session) {
    TransferRate rate{session.ConnectionKind(), BytesPerSecond, 1};
    if (ports::SerialSession* serial = FindSerial(session)) {
        rate.perSecond = serial->BaudRate();
        const int startBits = 1;
        rate.bitsPerByte = startBits + serial->DataBits() + StopBitCount(serial->StopBits());
    }
    return rate;
}

std::int32_t EstimateSeconds(std::uint64_t points, const TransferRate& rate) {
    const double bytes = static_cast<double>(points) * 2;
    return ToInt32(std::floor(bytes * rate.bitsPerByte / rate.perSecond + 1) + 2);
}

std::string EstimateText(const TransferRate& rate, std::int32_t seconds, NumberFormat format) {
    const std::string lineBreak(CrLf);
    std::string text = "Estimated download time, assuming" + lineBreak + rate.connectionKind;
    if (!rate.IsKnown()) {
        return text + " connection is unknown.";
    }
    const bool countsBytes = rate.bitsPerByte == 1;
    text += " connection at " + std::to_string(rate.perSecond);
    text += countsBytes ? " bytes per second:" : " bits per second:";
    return text + lineBreak + TimeText(seconds, format);
}

}  // namespace krv::waveform
