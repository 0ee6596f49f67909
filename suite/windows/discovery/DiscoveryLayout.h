// DiscoveryLayout: where the children of the discovery control's window are, for a size and a
// resolution.
#pragma once

#include <windows.h>

namespace krv::suite {

class DiscoveryLayout {
 public:
    DiscoveryLayout(SIZE size, int dotsPerInch, bool buttonsVisible, bool supportedVisible);

    // Empty for a child that isn't shown. In pixels of the window.
    [[nodiscard]] RECT PlaceOf(int child) const;

 private:
    [[nodiscard]] int Scaled(int pixels) const;
    [[nodiscard]] static RECT Box(int left, int top, int width, int height);
    [[nodiscard]] RECT Button(int top, int fromRight) const;

    SIZE m_size;
    int m_dotsPerInch;
    bool m_buttonsVisible;
    bool m_supportedVisible;
};

}  // namespace krv::suite
