// Picture: an image as plain pixels, and as indices into a table of colours, which most picture
// files want.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace krv::suite::picture {

struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend auto operator<=>(const Color&, const Color&) = default;
};

// Rows from the top, pixels from the left. Neither side is 0.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Color> pixels;

    [[nodiscard]] const Color* Row(int y) const { return pixels.data() + Offset(y); }
    [[nodiscard]] Color* Row(int y) { return pixels.data() + Offset(y); }

 private:
    [[nodiscard]] std::size_t Offset(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
    }
};

struct IndexedPicture {
    // At most 256.
    std::vector<Color> colors;
    // One a pixel, in the picture's order.
    std::vector<std::uint8_t> indices;
};

// With the picture's own colours, as long as a table has room for them; a picture of more colours
// gets the nearest of an even spread.
[[nodiscard]] IndexedPicture ToIndexed(const Picture& picture);

}  // namespace krv::suite::picture
