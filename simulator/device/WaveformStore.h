// WaveformStore: writes the waveforms that the generator received as files, 16-bit codes, little
// endian:
//
//     NAME.i.int16, NAME.q.int16 (separate arrays; the second only where there are Q codes)
//     NAME.iq.int16              (interleaved)
//     NAME.markers.int16         (where there are markers)
//
// The name becomes a plain file name: characters other than letters, digits, blanks, "_", "-", "."
// become "%" and their code in hexadecimal, as does the first one of a name that the system keeps
// for itself. Two names never share a file.
//
// The files of a waveform belong together, also when the generator is killed: they are prepared
// beside the earlier ones, and while they change there is no file of I or interleaved codes, which
// goes first and comes last. A link or a pipe in a file's place is replaced.
#pragma once

#include <filesystem>
#include <set>
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

    // Files of an earlier waveform of the name that have no successor are removed; a waveform
    // without codes has none. False when a file can't be written.
    [[nodiscard]] bool Write(const Waveform& waveform);
    // The waveform has got other markers since Write.
    [[nodiscard]] bool WriteMarkers(const Waveform& waveform);
    // Removes the waveform's files; those that can't be removed stay.
    void Drop(const std::string& name);

 private:
    struct StoredArray {
        const char* ending;
        std::span<const std::int16_t> codes;
    };
    [[nodiscard]] std::filesystem::path PathOf(const std::string& name, const char* ending) const;
    [[nodiscard]] bool Remove(const std::string& name, const char* ending) const;
    // An array without codes has no file. The others come in their order.
    [[nodiscard]] bool Replace(const std::string& name, std::span<const StoredArray> arrays) const;

    std::filesystem::path m_folder;
    // The waveforms whose files hold what Write was given last.
    std::set<std::string> m_upToDate;
};

}  // namespace krv::simulator
