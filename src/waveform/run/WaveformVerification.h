// WaveformVerification: what was sent in a download, compared with what the instrument says it
// holds.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "ports/suite/WaveformReadback.h"

namespace krv::waveform {

[[nodiscard]] ports::StoredArray SumUp(std::span<const std::int16_t> codes) noexcept;

// What was verified, in lines for a message; the arrays that hold nothing are left out.
[[nodiscard]] std::string VerificationText(const ports::StoredWaveform& sent, bool interleaved);

// The arrays that differ, as lines for a message; empty when none does.
[[nodiscard]] std::string VerificationFault(const ports::StoredWaveform& sent,
                                            const ports::StoredWaveform& found, bool interleaved);

}  // namespace krv::waveform
