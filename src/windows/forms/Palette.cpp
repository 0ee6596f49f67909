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

HBRUSH Palette::BrushOf(forms::Color color) {
    if ((color & SystemColorBit) != 0) {
        return GetSysColorBrush(static_cast<int>(color & ~SystemColorBit));
    }
    Brush& brush = m_brushes[color];
    if (brush == nullptr) {
        brush.reset(CreateSolidBrush(color));
    }
    return brush.get();
}

}  // namespace krv::windows
