// Interleaving of separate I and Q codes for the models that take both in one array, and back.
//
// Both directions work from the last point to the first and give memory back as they go, so that
// the codes are in memory once and not twice.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/memory/SampleBuffer.h"

namespace krv::waveform {

// I first, then Q, for each point of the longer array; where the other has ended the zero code
// stands in. Takes what the arrays hold and leaves them empty. Throws std::bad_alloc, with the
// arrays untouched.
[[nodiscard]] SampleBuffer<std::int16_t> InterleaveCodes(SampleBuffer<std::int16_t>& iCodes,
                                                         SampleBuffer<std::int16_t>& qCodes,
                                                         std::int16_t zeroCode);

struct SeparateCodes {
    SampleBuffer<std::int16_t> iCodes;
    SampleBuffer<std::int16_t> qCodes;
};

// The channels as they were, with so many codes each. Throws std::bad_alloc, with the array
// untouched.
[[nodiscard]] SeparateCodes SeparateInterleaved(SampleBuffer<std::int16_t>& interleaved,
                                                std::size_t iCount, std::size_t qCount);

}  // namespace krv::waveform
