#include "suite/windows/discovery/DiscoveryLayout.h"

#include <algorithm>

#include "suite/windows/discovery/DiscoveryWindow.h"
#include "windows/base/DotsPerInch.h"

namespace krv::suite {
namespace {

// In pixels at 96 dots per inch.
constexpr int Gap = 6;
constexpr int LineHeight = 15;
constexpr int ButtonWidth = 84;
constexpr int ButtonHeight = 24;
constexpr int LabelWidth = 56;

}  // namespace

DiscoveryLayout::DiscoveryLayout(SIZE size, int dotsPerInch, bool buttonsVisible,
                                 bool supportedVisible)
    : m_size(size),
      m_dotsPerInch(dotsPerInch),
      m_buttonsVisible(buttonsVisible),
      m_supportedVisible(supportedVisible) {}

int DiscoveryLayout::Scaled(int pixels) const {
    return MulDiv(pixels, m_dotsPerInch, windows::UsualDotsPerInch);
}

RECT DiscoveryLayout::Box(int left, int top, int width, int height) {
    return {left, top, left + std::max(width, 0), top + std::max(height, 0)};
}

// The buttons stand at the right edge; the last of a row is number 0.
RECT DiscoveryLayout::Button(int top, int fromRight) const {
    const int step = Scaled(ButtonWidth + Gap);
    return Box(m_size.cx - step * (fromRight + 1), top, Scaled(ButtonWidth), Scaled(ButtonHeight));
}

RECT DiscoveryLayout::PlaceOf(int child) const {
    const int gap = Scaled(Gap);
    const int line = Scaled(LineHeight);
    const int width = m_size.cx - 2 * gap;
    const int found = gap + (m_supportedVisible ? 2 * line + gap : 0);
    const int list = found + line + gap / 2;
    // A sentence that names an address and says what to do.
    const int statusHeight = 4 * line;
    const int status = m_size.cy - gap - statusHeight;
    const int address = status - gap - Scaled(ButtonHeight);
    const int box = gap + Scaled(LabelWidth);
    const int boxEnd = m_buttonsVisible ? Button(address, 1).left : m_size.cx;
    switch (child) {
        case DiscoveryWindow::SupportedLabel:
            return m_supportedVisible ? Box(gap, gap, width, 2 * line) : RECT{};
        case DiscoveryWindow::FoundLabel:
            return Box(gap, found, width, line);
        case DiscoveryWindow::FoundList:
            return Box(gap, list, Button(list, 0).left - 2 * gap, address - gap - list);
        case DiscoveryWindow::SearchButton:
            return Button(list, 0);
        case DiscoveryWindow::AddressLabel:
            return Box(gap, address, Scaled(LabelWidth), Scaled(ButtonHeight));
        case DiscoveryWindow::AddressBox:
            return Box(box, address, boxEnd - gap - box, Scaled(ButtonHeight));
        case DiscoveryWindow::ConnectButton:
            return m_buttonsVisible ? Button(address, 1) : RECT{};
        case DiscoveryWindow::DisconnectButton:
            return m_buttonsVisible ? Button(address, 0) : RECT{};
        default:
            return Box(gap, status, width, statusHeight);
    }
}

}  // namespace krv::suite
