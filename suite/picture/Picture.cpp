#include "suite/picture/Picture.h"

#include <map>
#include <optional>

namespace krv::suite::picture {
namespace {

constexpr std::size_t MaxColors = 256;
// Steps of each of the three channels of the even spread.
constexpr int CubeSteps = 6;

std::optional<IndexedPicture> WithOwnColors(const Picture& picture) {
    IndexedPicture indexed;
    std::map<Color, std::uint8_t> known;
    indexed.indices.reserve(picture.pixels.size());
    for (const Color& color : picture.pixels) {
        // Most pixels are like their neighbours.
        if (!indexed.indices.empty() && indexed.colors[indexed.indices.back()] == color) {
            indexed.indices.push_back(indexed.indices.back());
            continue;
        }
        const auto [entry, isNew] =
            known.try_emplace(color, static_cast<std::uint8_t>(indexed.colors.size()));
        if (isNew) {
            if (indexed.colors.size() == MaxColors) {
                return std::nullopt;
            }
            indexed.colors.push_back(color);
        }
        indexed.indices.push_back(entry->second);
    }
    return indexed;
}

int NearestStep(std::uint8_t channel) {
    return (channel * (CubeSteps - 1) + 127) / 255;
}

std::uint8_t StepValue(int step) {
    return static_cast<std::uint8_t>(step * 255 / (CubeSteps - 1));
}

IndexedPicture WithEvenSpread(const Picture& picture) {
    IndexedPicture indexed;
    for (int cell = 0; cell < CubeSteps * CubeSteps * CubeSteps; ++cell) {
        indexed.colors.push_back({StepValue(cell / (CubeSteps * CubeSteps)),
                                  StepValue(cell / CubeSteps % CubeSteps),
                                  StepValue(cell % CubeSteps)});
    }
    for (const Color& color : picture.pixels) {
        indexed.indices.push_back(static_cast<std::uint8_t>(
            (NearestStep(color.red) * CubeSteps + NearestStep(color.green)) * CubeSteps +
            NearestStep(color.blue)));
    }
    return indexed;
}

}  // namespace

IndexedPicture ToIndexed(const Picture& picture) {
    auto indexed = WithOwnColors(picture);
    return indexed ? std::move(*indexed) : WithEvenSpread(picture);
}

}  // namespace krv::suite::picture
