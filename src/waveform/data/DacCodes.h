// DacCodes: what the check step makes of a waveform and the transfer sends.
#pragma once

#include <cstdint>

#include "waveform/data/Codes.h"

namespace krv::waveform {

// Codes of the new model family are 16-bit two's complement, those of the old family 14-bit offset
// binary (0 to 16383, 8192 is zero); marker codes hold four or two bits. The arrays count from 0
// here and from 1 where automation sees them.
struct DacCodes {
    bool isNewModel = false;
    // They are written with the interleaved call: without a separate Q source `i` holds I and Q in
    // turn, and the markers are written, too.
    bool isSentInterleaved = false;
    SharedCodes i;
    // Empty without a separate Q source.
    SharedCodes q;
    SharedCodes markers;
    // Smallest and largest code of the I and Q arrays together; both 0 when there is no code.
    std::int16_t smallest = 0;
    std::int16_t largest = 0;
};

}  // namespace krv::waveform
