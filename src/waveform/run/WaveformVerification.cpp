#include "waveform/run/WaveformVerification.h"

#include <array>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
#include "common/Text.h"

namespace krv::waveform {
namespace {

struct NamedArray {
    const char* title;
    ports::StoredArray sent;
    ports::StoredArray found;
};

std::array<NamedArray, 3> ArraysOf(const ports::StoredWaveform& sent,
                                   const ports::StoredWaveform& found, bool interleaved) {
    return {{{interleaved ? "I and Q data" : "I data", sent.codes, found.codes},
             {"Q data", sent.qCodes, found.qCodes},
             {"Markers", sent.markers, found.markers}}};
}

std::string TextOf(const ports::StoredArray& array) {
    return std::to_string(array.count) + " codes, CRC-32 " + Hexadecimal(array.crc32);
}

}  // namespace

ports::StoredArray SumUp(std::span<const std::int16_t> codes) noexcept {
    return {codes.size(), CodesCrc32(codes)};
}

std::string VerificationText(const ports::StoredWaveform& sent, bool interleaved) {
    std::string text = "Verified in the instrument:";
    for (const NamedArray& array : ArraysOf(sent, sent, interleaved)) {
        if (array.sent.count != 0) {
            text += std::string(CrLf) + array.title + ": " + TextOf(array.sent);
        }
    }
    return text;
}

std::string VerificationFault(const ports::StoredWaveform& sent, const ports::StoredWaveform& found,
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

}  // namespace krv::waveform
