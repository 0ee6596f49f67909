// Samples without a header.
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "common/Text.h"
#include "formats/Counted.h"
#include "formats/Fault.h"
#include "formats/Readers.h"
#include "formats/SampleStreams.h"

namespace krv::formats {
namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 9> Endings{{
    {".CFILE", "cf32_le"},
    {".CF32", "cf32_le"},
    {".FC32", "cf32_le"},
    {".CF64", "cf64_le"},
    {".CS16", "ci16_le"},
    {".SC16", "ci16_le"},
    {".CS8", "ci8"},
    {".SC8", "ci8"},
    {".CU8", "cu8"},
}};

std::optional<SampleLayout> LayoutOf(const Opening& opening) {
    if (opening.options.raw) {
        return opening.options.raw;
    }
    const std::string name = UpperCase(opening.file.name);
    for (const auto& [ending, layout] : Endings) {
        if (name.ends_with(ending)) {
            return ParseSampleLayout(layout);
        }
    }
    return std::nullopt;
}

}  // namespace

bool IsRaw(const Opening& opening) {
    return LayoutOf(opening).has_value();
}

std::unique_ptr<Recording> OpenRaw(const Opening& opening) {
    const SampleLayout layout = LayoutOf(opening).value();
    const std::uint64_t frameBytes = std::uint64_t{layout.type.bytes} * (layout.isComplex ? 2 : 1);
    About about = AboutSamples("raw samples", layout, 1);
    CountFrames(about, opening.size, frameBytes);
    if (about.frames == 0U) {
        throw FileFault(opening.file.name,
                        "It holds no sample: it has " + Counted(opening.size, "byte") + '.');
    }
    std::vector<SampleStream> streams;
    streams.push_back(
        {OpenPiece(opening.file, 0, opening.size), layout.type, about.columns.size()});
    return std::make_unique<SampleStreams>(opening.file.name, std::move(about), std::move(streams));
}

}  // namespace krv::formats
