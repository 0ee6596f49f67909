#include "waveform/run/TimeEstimate.h"

#include <cmath>

#include "common/Text.h"
#include "waveform/run/Connection.h"

namespace krv::waveform {
namespace {

// What a connection other than a serial line is taken to carry.
constexpr std::int32_t BytesPerSecond = 87500;

// A download that is over sooner starts without asking.
constexpr std::int32_t SecondsWorthAsking = 11;

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

bool EstimateDownloadTime(const DownloadPlan& plan, const DacCodes& codes,
                          const RunServices& services, RunRecord& record) {
    services.progress.ShowMessage("Estimating download time...");
    services.progress.ShowProgress(100, 50);
    if (services.progress.TestCancelFlag()) {
        return false;
    }
    const TransferRate rate = ReadTransferRate(*RequireSession(*plan.instrument.connected));
    if (rate.IsKnown()) {
        const std::size_t qPoints = plan.useQ ? codes.q.Size() : 0;
        record.estimatedSeconds = EstimateSeconds(codes.i.Size() + qPoints, rate);
        record.expectedSeconds = record.estimatedSeconds;
    }
    if (services.progress.TestCancelFlag()) {
        return false;
    }
    const std::string text =
        EstimateText(rate, record.estimatedSeconds, services.desktop.numberFormat);
    if (plan.mode != RunMode::Download) {
        services.user.Tell(text, ports::MessageIcon::None);
        return true;
    }
    const bool isShort = rate.IsKnown() && record.estimatedSeconds < SecondsWorthAsking;
    return isShort || services.user.Tell(text + "\r\n\r\nDo you want to continue?",
                                         ports::MessageIcon::Exclamation,
                                         ports::MessageButtons::YesNo) == ports::MessageAnswer::Yes;
}

TransferRate ReadTransferRate(ports::IoSession& session) {
    TransferRate rate{session.ConnectionKind(), BytesPerSecond, 1};
    if (rate.connectionKind.empty()) {
        rate.connectionKind = session.Address();
    }
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
