#include "windows/base/FittedMessageBox.h"

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include "windows/base/DeviceContext.h"
#include "windows/base/Handles.h"
#include "windows/base/ProcedureGuard.h"

namespace krv::windows {
namespace {

// Of a message box's text among its parts; the icon is the other STATIC.
constexpr int MessageTextId = 0xFFFF;
// A line that just fits would still be broken.
constexpr int Spare = 4;

using Hook = OwnedHandle<HHOOK, UnhookWindowsHookEx>;

std::wstring TextOfWindow(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

bool IsOfClass(HWND window, const wchar_t* expected) {
    std::array<wchar_t, 32> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return lstrcmpiW(name.data(), expected) == 0;
}

SIZE SizeOf(const RECT& area) {
    return {area.right - area.left, area.bottom - area.top};
}

// In a line each, or broken at this width.
SIZE TextSize(HWND window, HGDIOBJ font, const std::wstring& text, LONG width = 0) {
    const WindowContext context(window);
    const SelectedObject selected(context.Get(), font);
    RECT area{0, 0, width, 0};
    DrawTextW(context.Get(), text.c_str(), -1, &area,
              DT_CALCRECT | DT_EXPANDTABS | DT_NOPREFIX | (width > 0 ? DT_WORDBREAK : 0U));
    return SizeOf(area);
}

// Of a box that shows the title whole beside the button that closes it.
LONG TitleWidth(HWND box) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const Font font(CreateFontIndirectW(&metrics.lfCaptionFont));
    return TextSize(box, font.get(), TextOfWindow(box)).cx + 3 * metrics.iCaptionWidth;
}

// As wide as a message's text may become: as the system has it where there is room.
LONG MostTextWidth(HWND box) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(box, MONITOR_DEFAULTTONEAREST), &monitor);
    return SizeOf(monitor.rcWork).cx * 5 / 8;
}

RECT PlaceInBox(HWND box, HWND part) {
    RECT place{};
    GetWindowRect(part, &place);
    MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void Put(HWND window, LONG left, LONG top, SIZE size) {
    SetWindowPos(window, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

// What is done to a box's parts. Text and icon stand in one row, one of them centred beside the
// other; the buttons stand below.
struct Fitting {
    HWND box;
    HWND text;
    LONG wider;
    SIZE textSize;
    LONG rowHeight;
    LONG lessHeight;

    void Move(HWND part) const {
        const RECT place = PlaceInBox(box, part);
        if (part == text) {
            const LONG off = SizeOf(place).cy - textSize.cy;
            Put(part, place.left, place.top + (off - lessHeight) / 2, textSize);
        } else if (IsOfClass(part, L"Button")) {
            Put(part, place.left + wider / 2, place.top - lessHeight, SizeOf(place));
        } else if (SizeOf(place).cy < rowHeight + lessHeight) {
            Put(part, place.left, place.top - lessHeight / 2, SizeOf(place));
        }
    }
};

BOOL CALLBACK MovePart(HWND part, LPARAM fitting) {
    reinterpret_cast<const Fitting*>(fitting)->Move(part);
    return TRUE;
}

LONG IconHeight(HWND box) {
    const HWND first = FindWindowExW(box, nullptr, L"Static", nullptr);
    // Some systems keep an empty window in the icon's place.
    const bool hasIcon = first != nullptr && SendMessageW(first, STM_GETICON, 0, 0) != 0;
    return hasIcon ? SizeOf(PlaceInBox(box, first)).cy : 0;
}

void FitMessageBox(HWND box) {
    const HWND text = GetDlgItem(box, MessageTextId);
    if (text == nullptr) {
        return;
    }
    RECT place{};
    GetWindowRect(box, &place);
    const SIZE before = SizeOf(PlaceInBox(box, text));
    auto* const font = reinterpret_cast<HGDIOBJ>(SendMessageW(text, WM_GETFONT, 0, 0));
    const std::wstring message = TextOfWindow(text);
    const LONG lines = std::min(TextSize(text, font, message).cx + Spare, MostTextWidth(box));
    const LONG wider = std::max(lines - before.cx, TitleWidth(box) - SizeOf(place).cx);
    if (wider <= 0) {
        return;
    }
    const LONG width = before.cx + wider;
    const SIZE after{width, std::min(TextSize(text, font, message, width).cy, before.cy)};
    const LONG icon = IconHeight(box);
    const LONG row = std::max(icon, after.cy);
    const Fitting fitting{box, text, wider, after, row, std::max(icon, before.cy) - row};
    EnumChildWindows(box, MovePart, reinterpret_cast<LPARAM>(&fitting));
    Put(box, std::max(place.left - wider / 2, 0L), place.top + fitting.lessHeight / 2,
        {SizeOf(place).cx + wider, SizeOf(place).cy - fitting.lessHeight});
}

// The system has laid a box out when it has answered this message; it activates the box before.
LRESULT CALLBACK WatchForBox(int code, WPARAM wide, LPARAM low) noexcept {
    const auto* const answered = reinterpret_cast<const CWPRETSTRUCT*>(low);
    if (code == HC_ACTION && answered->message == WM_INITDIALOG) {
        GuardProcedure([&] {
            FitMessageBox(answered->hwnd);
            return LRESULT{0};
        });
    }
    return CallNextHookEx(nullptr, code, wide, low);
}

}  // namespace

int ShowFittedMessageBox(HWND owner, const std::wstring& text, const std::wstring& title,
                         UINT style) {
    const Hook hook(
        SetWindowsHookExW(WH_CALLWNDPROCRET, WatchForBox, nullptr, GetCurrentThreadId()));
    return MessageBoxW(owner, text.c_str(), title.c_str(), style);
}

}  // namespace krv::windows
