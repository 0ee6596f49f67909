// Interleaving of separate I and Q codes for the models that take both in one array.
#pragma once

#include <cstdint>
#include <span>

#include "common/memory/SampleBuffer.h"

namespace krv {

// I first, then Q, for each point of the longer array; where the other has ended the zero code
// stands in. Throws std::bad_alloc.
[[nodiscard]] SampleBuffer<std::int16_t> InterleaveCodes(std::span<const std::int16_t> iCodes,
                                                         std::span<const std::int16_t> qCodes,
                                                         std::int16_t zeroCode);

}  // namespace krv
