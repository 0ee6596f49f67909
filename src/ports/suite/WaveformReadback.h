// What an instrument reports that it holds under a waveform's name: the role of a server whose
// instrument can count the codes that it received and form their checksum.
#pragma once

#include <cstdint>
#include <string>

namespace krv::ports {

struct StoredArray {
    std::uint64_t count = 0;
    // Over the codes as little-endian bytes (see Crc32.h); 0 for no codes.
    std::uint32_t crc32 = 0;

    bool operator==(const StoredArray&) const = default;
};

struct StoredWaveform {
    // The I codes, or I and Q interleaved.
    StoredArray codes;
    // Empty when interleaved, and where there is no Q data.
    StoredArray qCodes;
    StoredArray markers;

    bool operator==(const StoredWaveform&) const = default;
};

class WaveformReadback {
 public:
    virtual ~WaveformReadback() = default;
    // Throws Error with the server's description, also when there is no such waveform.
    virtual StoredWaveform ReadBack(const std::string& name) = 0;
};

}  // namespace krv::ports
