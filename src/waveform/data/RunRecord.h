// RunRecord: what the last run found out; kept until the next run starts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ports/suite/InstrumentServer.h"

namespace krv::waveform {

struct RunRecord {
    // How long reading and converting took, questions included; -1 while not done. Once converting
    // is done, the codes are ready.
    std::int64_t readMs = -1;
    std::int64_t convertMs = -1;
    // The file that holds something else than numbers; empty where none does.
    std::string unreadFile;
    // -1 while this run has estimated nothing.
    std::int32_t estimatedSeconds = -1;
    // The latest estimate of this run or of an earlier one, from which the completion time is
    // shown.
    std::int32_t expectedSeconds = 0;
    std::string destinationName;
    // Every array was written without a failing call.
    bool transferred = false;
    // How long the calls that write the arrays took; -1 while nothing was sent.
    std::int64_t transferMs = -1;
    // Whether the instrument says that it holds what was sent; nothing when it wasn't asked.
    std::optional<bool> verified;
    // What the instrument's queue held after the transfer, oldest first.
    std::vector<ports::InstrumentError> instrumentErrors;
};

}  // namespace krv::waveform
