// The estimate of how long a transfer takes, from the number of codes and the speed that the
// session reports.
#pragma once

#include <cstdint>
#include <string>

#include "common/Numbers.h"
#include "ports/suite/InstrumentServer.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunRecord.h"
#include "waveform/data/RunServices.h"

namespace krv::waveform {

// Works out the transfer time, into the record; a validation shows it, a download asks for consent
// where it is long. False when the user has cancelled or declined. Throws what the instrument
// throws, and Error 91 without a session.
[[nodiscard]] bool EstimateDownloadTime(const DownloadPlan& plan, const DacCodes& codes,
                                        const RunServices& services, RunRecord& record);

struct TransferRate {
    // The text that names the kind of connection, e.g. "LAN".
    std::string connectionKind;
    // Bytes a second where bitsPerByte is 1, else bits a second; 0 when it is not known.
    std::int32_t perSecond = 0;
    // What one byte takes on a serial line, start and stop bits included.
    double bitsPerByte = 1;

    [[nodiscard]] bool IsKnown() const noexcept { return perSecond > 0; }
};

// A session that fails to say whether it is serial counts as not serial; other errors go on to the
// caller.
[[nodiscard]] TransferRate ReadTransferRate(ports::IoSession& session);

// Whole seconds for 16-bit codes at a known rate. Throws Error 6 beyond 32 bits.
[[nodiscard]] std::int32_t EstimateSeconds(std::uint64_t points, const TransferRate& rate);

// The estimate in words; the seconds are not used when the rate is not known.
[[nodiscard]] std::string EstimateText(const TransferRate& rate, std::int32_t seconds,
                                       NumberFormat format);

}  // namespace krv::waveform
