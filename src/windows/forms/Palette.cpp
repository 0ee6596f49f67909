#include "windows/forms/Palette.h"

namespace krv::windows {
namespace {

constexpr forms::Color SystemColorBit = 0x80000000U;

}  // namespace

COLORREF ToColorRef(forms::Color color) {
    if ((color & SystemColorBit) != 0) {
        return GetSysColor(static_cast<int>(color & ~SystemColorBit));
    }
    return color;
}

Palette::~Palette() {
    for (const auto& [color, brush] : m_brushes) {
        DeleteObject(brush);
    }
}

HBRUSH Palette::Brush(forms::Color color) {
    if ((color & SystemColorBit) != 0) {
        return GetSysColorBrush(static_cast<int>(color & ~SystemColorBit));
    }
    HBRUSH& brush = m_brushes[color];
    if (brush == nullptr) {
        brush = CreateSolidBrush(color);
    }
    return brush;
}

}  // namespace krv::windows
