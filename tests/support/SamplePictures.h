// Pictures that show at once when rows, sides or colours are mixed up.
#pragma once

#include <cstdint>

#include "suite/picture/Picture.h"

namespace krv::tests {

// No two corners alike, with so many colours and an odd width.
[[nodiscard]] inline suite::picture::Picture SamplePicture(int width, int height, int colors) {
    suite::picture::Picture sample{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto number = static_cast<unsigned>((x + y * width) % colors);
            sample.pixels.push_back({static_cast<std::uint8_t>(number * 7),
                                     static_cast<std::uint8_t>(255 - number % 256),
                                     static_cast<std::uint8_t>(number / 256 * 5 + 3)});
        }
    }
    return sample;
}

// Dark on light with an area of colour: what a display shows, and a compression that loses detail
// can keep.
[[nodiscard]] inline suite::picture::Picture DisplayLikePicture() {
    suite::picture::Picture sample{64, 32, {}};
    sample.pixels.assign(64 * 32, {220, 230, 215});
    for (int y = 4; y < 12; ++y) {
        for (int x = 8; x < 40; ++x) {
            sample.Row(y)[x] = {20, 30, 40};
        }
    }
    for (int y = 20; y < 28; ++y) {
        for (int x = 32; x < 60; ++x) {
            sample.Row(y)[x] = {180, 20, 30};
        }
    }
    return sample;
}

}  // namespace krv::tests
