// WaveformStore: writes the waveforms that the generator received as files, 16-bit codes, little
// endian:
//
//     NAME.i.int16, NAME.q.int16 (separate arrays; the second only where there are Q codes)
//     NAME.iq.int16              (interleaved)
//     NAME.markers.int16         (where there are markers)
//
// The name becomes a plain file name: characters other than letters, digits, blanks, "_", "-", "."
// become "_", and a name that had to be changed, or looks so, gets its CRC-32 as an ending, so that
// two names never share a file. The files of a waveform are prepared beside the earlier ones, and
// take their places when all are there; a link or a pipe in a file's place is replaced.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "simulator/device/WaveformMemory.h"

namespace krv::simulator {

// What the names of a waveform's files start with.
[[nodiscard]] std::string StoredFileStem(std::string_view waveformName);

class WaveformStore {
 public:
    // Makes the folder if it is missing. Throws std::filesystem::filesystem_error.
    explicit WaveformStore(std::filesystem::path folder);

    // Files of an earlier waveform of the name that have no successor are removed. False when a
    // file can't be written.
    [[nodiscard]] bool Write(const Waveform& waveform) const;
    // Writes only the markers' file, to those that Write has written.
    [[nodiscard]] bool WriteMarkers(const Waveform& waveform) const;
    // Removes the waveform's files; those that can't be removed stay.
    void Drop(const std::string& name) const;

 private:
    struct StoredArray {
        const char* ending;
        std::span<const std::int16_t> codes;
    };
    [[nodiscard]] static StoredArray Markers(const Waveform& waveform);
    // An array without codes has no file.
    [[nodiscard]] bool WriteArrays(const std::string& name,
                                   std::span<const StoredArray> arrays) const;

    std::filesystem::path m_folder;
};

}  // namespace krv::simulator
