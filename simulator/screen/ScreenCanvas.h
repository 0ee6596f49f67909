// ScreenCanvas: the pixels of the generator's display while they are being drawn.
#pragma once

#include <string_view>
#include <utility>

#include "suite/picture/Picture.h"

namespace krv::simulator {

// In pixels.
struct ScreenArea {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

class ScreenCanvas {
 public:
    ScreenCanvas(int width, int height, suite::picture::Color background);

    // What lies off the display is cut off.
    void Fill(const ScreenArea& area, suite::picture::Color color);
    void Frame(const ScreenArea& area, suite::picture::Color color);
    // From the left top of the first letter; each of its dots has `scale` pixels a side.
    void Text(int left, int top, std::string_view text, int scale, suite::picture::Color color);
    void TextCentred(const ScreenArea& area, std::string_view text, int scale,
                     suite::picture::Color color);

    [[nodiscard]] suite::picture::Picture Take() { return std::move(m_picture); }

 private:
    suite::picture::Picture m_picture;
};

[[nodiscard]] int TextWidth(std::string_view text, int scale) noexcept;

}  // namespace krv::simulator
