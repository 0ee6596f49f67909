// Sequence: waveforms that are played in turn, each so many times: "Name*3,Other".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace krv::simulator {

struct Segment {
    std::string name;
    std::uint32_t repeats = 1;
};

using Sequence = std::vector<Segment>;

inline constexpr std::size_t MostSegments = 256;
inline constexpr std::uint32_t MostRepeats = 65535;

// An empty text is a sequence of nothing. Throws CommandFailure for a text that is no sequence.
[[nodiscard]] Sequence ParseSequence(std::string_view text);
[[nodiscard]] std::string SequenceText(const Sequence& sequence);

}  // namespace krv::simulator
