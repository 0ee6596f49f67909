// Import: the waveform in a file of another program, with what was found out and done on the way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/memory/SampleBuffer.h"
#include "formats/ByteStreams.h"
#include "formats/Formats.h"
#include "formats/Samples.h"

namespace krv::formats {

struct ImportOptions {
    std::optional<SampleLayout> raw;
    // For I, Q and markers, see FindRoles.
    std::vector<std::string> columns;
    // The points that are taken, all without a count.
    std::uint64_t firstPoint = 0;
    std::optional<std::uint64_t> points;
    // In hertz.
    std::optional<double> resampleTo;
    // The peak that the values are scaled to, in percent of full scale.
    std::optional<double> peakPercent;
};

struct ImportedWaveform {
    std::string format;
    Samples i;
    // Empty where the file has one channel.
    Samples q;
    // From 0 to 15; empty where the file has none.
    SampleBuffer<std::uint8_t> markers;
    std::optional<double> sampleRate;
    // The magnitude of the values that stands for full scale.
    double fullScale = 1;
    bool isInteger = false;
    // The largest magnitude of an I or Q value.
    double peak = 0;
    // What was found and done, and what the user should see to; sentences.
    std::vector<std::string> done;
    std::vector<std::string> warnings;

    [[nodiscard]] std::size_t Points() const noexcept { return i.Size(); }
    [[nodiscard]] bool HasQ() const noexcept { return q.Size() > 0; }
    [[nodiscard]] bool IsBeyondFullScale() const noexcept { return peak > fullScale; }
};

// Calls `lookUp` every few thousand points, which may throw to end the work. Throws Error 321 with
// the place and the reason where the file can't be read, the file system's errors, and
// std::bad_alloc.
[[nodiscard]] ImportedWaveform Import(const InputFile& file, const ImportOptions& options,
                                      const std::function<void()>& lookUp);

}  // namespace krv::formats
