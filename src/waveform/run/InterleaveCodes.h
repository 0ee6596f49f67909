// Interleaving of separate I and Q codes for the models that take both in one array, and back.
//
// Both directions work from the last point to the first and give memory back as they go, so that
// codes that nothing else holds are in memory once and not twice.
#pragma once

#include <cstddef>
#include <cstdint>

#include "waveform/data/Codes.h"

namespace krv::waveform {

// I first, then Q, for each point of the longer array; where the other has ended the zero code
// stands in. An array that nothing else holds is taken and left empty, any other stays as it is.
// Throws std::bad_alloc, with the arrays untouched.
[[nodiscard]] SampleBuffer<std::int16_t> InterleaveCodes(SharedCodes& iCodes, SharedCodes& qCodes,
                                                         std::int16_t zeroCode);

// Gives the channels back to where InterleaveCodes has taken them from, with so many codes each.
// Throws std::bad_alloc, with everything untouched.
void SeparateInterleaved(SampleBuffer<std::int16_t>& interleaved, SharedCodes& iCodes,
                         std::size_t iCount, SharedCodes& qCodes, std::size_t qCount);

}  // namespace krv::waveform
