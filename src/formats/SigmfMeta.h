// SigmfMeta: what the description of a SigMF recording says.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "formats/Recording.h"
#include "formats/SampleType.h"

namespace krv::formats {

struct SigmfMeta {
    SampleLayout layout;
    std::size_t channels = 1;
    std::optional<double> sampleRate;
    // The file of the samples where it isn't named like the description; never in another folder.
    std::string dataset;
    // In front of the first sample and behind the last one.
    std::uint64_t headerBytes = 0;
    std::uint64_t trailingBytes = 0;
    // The number of the first sample, from which annotations count.
    std::uint64_t offset = 0;
    // The points at which the captures begin.
    std::vector<std::uint64_t> captures;
    std::vector<Annotation> annotations;
};

// Throws Error 321 in the file's name.
[[nodiscard]] SigmfMeta ParseSigmfMeta(const std::string& file, std::string_view text);

}  // namespace krv::formats
