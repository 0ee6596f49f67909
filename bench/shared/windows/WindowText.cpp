#include "bench/shared/windows/WindowText.h"

#include "windows/base/WideText.h"

namespace krv::bench {

windows::Font NewMessageFont(UINT dotsPerInch) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    font.lfHeight = -MulDiv(9, static_cast<int>(dotsPerInch), 72);
    font.lfQuality = CLEARTYPE_QUALITY;
    return windows::Font(CreateFontIndirectW(&font));
}

std::string TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return windows::ToUtf8(text);
}

}  // namespace krv::bench
