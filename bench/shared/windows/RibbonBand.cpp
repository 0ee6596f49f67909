#include "bench/shared/windows/RibbonBand.h"

#include <algorithm>
#include <utility>

#include "bench/shared/windows/WindowText.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"

namespace krv::bench {
namespace {

constexpr windows::WindowKind BandKind{L"KrvRibbon"};
// Pixels at 96 dots an inch.
constexpr int TabHeight = 22;
constexpr int ButtonHeight = 62;
constexpr int LabelHeight = 18;
constexpr int NarrowestButton = 52;
constexpr int PictureSide = 32;
constexpr int Margin = 4;
constexpr BYTE GreyedOpacity = 90;

}  // namespace

RibbonBand::RibbonBand(HWND parent) : m_font(NewMessageFont(windows::DotsPerInch(parent))) {
    Create(BandKind, {.title = L"Ribbon",
                      .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                      .extendedStyle = WS_EX_CONTROLPARENT,
                      .parent = parent});
    m_toolTips =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, Handle(), nullptr, nullptr, nullptr);
}

RibbonBand::~RibbonBand() {
    RemoveButtons();
}

std::vector<const BandButton*> RibbonBand::Buttons() const {
    std::vector<const BandButton*> buttons;
    for (const BandGroup& group : m_groups) {
        for (const BandButton& button : group.buttons) {
            buttons.push_back(&button);
        }
    }
    return buttons;
}

void RibbonBand::Show(const std::string& tab, std::vector<BandGroup> groups) {
    const auto names = [this] {
        std::vector<std::string> all;
        for (const BandButton* button : Buttons()) {
            all.push_back(button->name);
        }
        return all;
    };
    const auto before = names();
    const auto former = std::exchange(m_groups, std::move(groups));
    const bool isSame = names() == before;
    m_tab = tab;
    if (!isSame) {
        auto present = std::exchange(m_groups, former);
        RemoveButtons();
        m_groups = std::move(present);
        MakeButtons();
    }
    ShowButtons();
    Arrange();
}

void RibbonBand::MakeButtons() {
    for (const BandButton* button : Buttons()) {
        const auto id = static_cast<INT_PTR>(m_windows.size());
        const HWND window =
            CreateWindowExW(0, WC_BUTTONW, L"", WS_CHILD | BS_OWNERDRAW, 0, 0, 0, 0, Handle(),
                            reinterpret_cast<HMENU>(id), windows::ThisModule(), nullptr);
        windows::AddWindowName(window, button->name);
        m_windows.push_back(window);
        std::wstring text;
        ShowTip(static_cast<std::size_t>(id), text);
    }
}

void RibbonBand::RemoveButtons() {
    const auto buttons = Buttons();
    for (std::size_t index = 0; index < m_windows.size(); ++index) {
        windows::RemoveWindowName(m_windows[index], buttons[index]->name);
        DestroyWindow(m_windows[index]);
    }
    m_windows.clear();
}

void RibbonBand::ShowTip(std::size_t index, std::wstring& text) const {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = Handle();
    tool.uId = reinterpret_cast<UINT_PTR>(m_windows[index]);
    tool.lpszText = text.data();
    SendMessageW(m_toolTips, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(m_toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

// What a screen reader reads out is what the tip says.
void RibbonBand::ShowButtons() {
    const auto buttons = Buttons();
    for (std::size_t index = 0; index < buttons.size(); ++index) {
        std::wstring tip = windows::ToWide(buttons[index]->tip);
        SetWindowTextW(m_windows[index], tip.c_str());
        ShowTip(index, tip);
        EnableWindow(m_windows[index], buttons[index]->isEnabled ? TRUE : FALSE);
        InvalidateRect(m_windows[index], nullptr, TRUE);
    }
}

int RibbonBand::Height() const {
    return Scaled(TabHeight + ButtonHeight + LabelHeight + 2 * Margin);
}

void RibbonBand::Move(const RECT& place) {
    MoveWindow(Handle(), place.left, place.top, place.right - place.left, place.bottom - place.top,
               TRUE);
    Arrange();
}

int RibbonBand::WidthOf(const BandButton& button) const {
    const windows::WindowContext context(Handle());
    const windows::SelectedObject font(context.Get(), m_font.get());
    const std::wstring label = windows::ToWide(button.label);
    SIZE size{};
    GetTextExtentPoint32W(context.Get(), label.c_str(), static_cast<int>(label.size()), &size);
    return std::max(static_cast<int>(size.cx) + Scaled(2 * Margin), Scaled(NarrowestButton));
}

void RibbonBand::Arrange() {
    int left = Scaled(Margin);
    std::size_t index = 0;
    for (const BandGroup& group : m_groups) {
        for (const BandButton& button : group.buttons) {
            const HWND window = m_windows[index++];
            if (button.isVisible) {
                const int width = WidthOf(button);
                SetWindowPos(window, nullptr, left, Scaled(TabHeight + Margin), width,
                             Scaled(ButtonHeight), SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
                left += width;
            } else {
                ShowWindow(window, SW_HIDE);
            }
        }
        left += Scaled(3 * Margin);
    }
    InvalidateRect(Handle(), nullptr, TRUE);
}

LRESULT RibbonBand::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_DRAWITEM:
            Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(low));
            return TRUE;
        case WM_COMMAND: {
            const auto buttons = Buttons();
            if (HIWORD(wide) == BN_CLICKED && LOWORD(wide) < buttons.size()) {
                // What the click starts may show another ribbon.
                const auto click = buttons[LOWORD(wide)]->click;
                click();
            }
            return 0;
        }
        default:
            return DefaultMessage(message, wide, low);
    }
}

void RibbonBand::Paint() {
    const windows::PaintContext paint(Handle());
    const HDC context = paint.Get();
    const windows::SelectedObject font(context, m_font.get());
    SetBkMode(context, TRANSPARENT);
    RECT tab{Scaled(2 * Margin), 0, Scaled(400), Scaled(TabHeight)};
    SetTextColor(context, RGB(0, 90, 170));
    const std::wstring title = windows::ToWide(m_tab);
    DrawTextW(context, title.c_str(), -1, &tab, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    int left = Scaled(Margin);
    const int top = Scaled(TabHeight + Margin + ButtonHeight);
    for (const BandGroup& group : m_groups) {
        int width = 0;
        for (const BandButton& button : group.buttons) {
            width += button.isVisible ? WidthOf(button) : 0;
        }
        const std::wstring label = windows::ToWide(group.label);
        RECT place{left, top, left + width, top + Scaled(LabelHeight)};
        DrawTextW(context, label.c_str(), -1, &place,
                  DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
        const int line = left + width + Scaled(Margin + Margin / 2);
        RECT separator{line, Scaled(TabHeight + Margin), line + 1, top + Scaled(LabelHeight)};
        FillRect(context, &separator, GetSysColorBrush(COLOR_3DLIGHT));
        left += width + Scaled(3 * Margin);
    }
    RECT client{};
    GetClientRect(Handle(), &client);
    const RECT bottom{0, client.bottom - 1, client.right, client.bottom};
    FillRect(context, &bottom, GetSysColorBrush(COLOR_BTNSHADOW));
}

void RibbonBand::Draw(const DRAWITEMSTRUCT& item) const {
    const auto buttons = Buttons();
    if (item.CtlID >= buttons.size()) {
        return;
    }
    const BandButton& button = *buttons[item.CtlID];
    FillRect(
        item.hDC, &item.rcItem,
        GetSysColorBrush((item.itemState & ODS_SELECTED) != 0 ? COLOR_3DLIGHT : COLOR_BTNFACE));
    DrawPicture(item, button);
    const windows::SelectedObject font(item.hDC, m_font.get());
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(button.isEnabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    const std::wstring label = windows::ToWide(button.label);
    RECT place = item.rcItem;
    place.top += button.picture != nullptr ? Scaled(PictureSide + 2 * Margin) : 0;
    DrawTextW(item.hDC, label.c_str(), -1, &place,
              DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    if ((item.itemState & ODS_FOCUS) != 0) {
        DrawFocusRect(item.hDC, &item.rcItem);
    }
}

void RibbonBand::DrawPicture(const DRAWITEMSTRUCT& item, const BandButton& button) const {
    BITMAP look{};
    if (button.picture == nullptr || GetObjectW(button.picture, sizeof look, &look) == 0) {
        return;
    }
    const windows::MemoryContext source(CreateCompatibleDC(item.hDC));
    const windows::SelectedObject selected(source.get(), button.picture);
    const int left = (static_cast<int>(item.rcItem.right) - look.bmWidth) / 2;
    const BYTE opacity = button.isEnabled ? BYTE{255} : GreyedOpacity;
    GdiAlphaBlend(item.hDC, left, Scaled(Margin), look.bmWidth, look.bmHeight, source.get(), 0, 0,
                  look.bmWidth, look.bmHeight, {AC_SRC_OVER, 0, opacity, AC_SRC_ALPHA});
}

int RibbonBand::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(Handle())),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
