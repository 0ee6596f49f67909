#include "waveform/run/WaveformVerification.h"

#include <array>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
#include "common/Text.h"

namespace krv {
namespace {

struct NamedArray {
    const char* title;
    suite::StoredArray sent;
    suite::StoredArray found;
};

std::array<NamedArray, 3> ArraysOf(const suite::StoredWaveform& sent,
                                   const suite::StoredWaveform& found, bool interleaved) {
    return {{{interleaved ? "I and Q data" : "I data", sent.codes, found.codes},
             {"Q data", sent.qCodes, found.qCodes},
             {"Markers", sent.markers, found.markers}}};
}

std::string TextOf(const suite::StoredArray& array) {
    return std::to_string(array.count) + " codes, CRC-32 " + Hexadecimal(array.crc32);
}

}  // namespace

suite::StoredArray SumUp(std::span<const std::int16_t> codes) noexcept {
    return {codes.size(), CodesCrc32(codes)};
}

std::string VerificationText(const suite::StoredWaveform& sent, bool interleaved) {
    std::string text = "Verified in the instrument:";
    for (const NamedArray& array : ArraysOf(sent, sent, interleaved)) {
        if (array.sent.count != 0) {
            text += std::string(CrLf) + array.title + ": " + TextOf(array.sent);
        }
    }
    return text;
}

std::string VerificationFault(const suite::StoredWaveform& sent, const suite::StoredWaveform& found,
                              bool interleaved) {
    std::string fault;
    for (const NamedArray& array : ArraysOf(sent, found, interleaved)) {
        if (array.sent != array.found) {
            fault += std::string(CrLf) + array.title + ": " + TextOf(array.sent) + " sent; " +
                     TextOf(array.found) + " found";
        }
    }
    return fault.empty() ? fault
                         : "The waveform in the instrument is not the one that was sent." + fault;
}

}  // namespace krv
