#include "bench/document/windows/DocumentPage.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>

#include "bench/document/PageLayout.h"
#include "bench/shared/windows/WindowText.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* PageClass = L"KrvDocPage";
constexpr const wchar_t* FontName = L"Times New Roman";
// Points.
constexpr double FontSize = 12;
constexpr double PaperWidth = 576;
constexpr double Margin = 54;
constexpr double Gap = 12;
// Windows that are higher don't get their mouse.
constexpr int HighestText = 24000;

std::wstring WithLineBreaks(const std::string& text) {
    std::wstring shown;
    for (const wchar_t character : windows::ToWide(text)) {
        shown += character == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, character);
    }
    return shown;
}

windows::Font NewTextFont(UINT dotsPerInch) {
    LOGFONTW font{};
    font.lfHeight = -static_cast<LONG>(std::lround(FontSize * dotsPerInch / 72));
    font.lfQuality = CLEARTYPE_QUALITY;
    std::wstring(FontName).copy(font.lfFaceName, LF_FACESIZE - 1);
    return windows::Font(CreateFontIndirectW(&font));
}

int LineHeightOf(HFONT font, HWND window) {
    TEXTMETRICW metrics{};
    const windows::WindowContext context(window);
    const windows::SelectedObject selected(context.Get(), font);
    GetTextMetricsW(context.Get(), &metrics);
    return std::max(1, static_cast<int>(metrics.tmHeight));
}

}  // namespace

DocumentPage::DocumentPage(HWND parent, DocumentApplication& application)
    : m_application(application), m_font(NewTextFont(windows::DotsPerInch(parent))) {
    Create({PageClass, COLOR_APPWORKSPACE},
           {.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_VSCROLL, .parent = parent});
    m_text = CreateWindowExW(0, WC_EDITW, L"",
                             WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_MULTILINE |
                                 ES_AUTOVSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
                             0, 0, 0, 0, Handle(), nullptr, nullptr, nullptr);
    SendMessageW(m_text, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    SendMessageW(m_text, EM_LIMITTEXT, 0, 0);
    m_lineHeight = LineHeightOf(m_font.get(), m_text);
    Follow(OfficeChange::Documents);
}

void DocumentPage::Follow(OfficeChange change) {
    if (change == OfficeChange::Documents) {
        m_scrolled = 0;
    }
    if (change == OfficeChange::Documents || change == OfficeChange::Content) {
        ShowText();
    }
    if (change == OfficeChange::Documents || change == OfficeChange::Pictures) {
        ShowPictures();
    }
}

// While the user types, the box has the text already.
void DocumentPage::ShowText() {
    if (m_isShowing) {
        return;
    }
    const auto document = m_application.OpenDocument();
    m_isShowing = true;
    SetWindowTextW(m_text, WithLineBreaks(document ? document->Text() : std::string()).c_str());
    m_isShowing = false;
    Arrange();
}

void DocumentPage::TakeText() {
    const auto document = m_application.OpenDocument();
    if (m_isShowing || !document) {
        return;
    }
    std::string text = TextOf(m_text);
    std::erase(text, '\r');
    m_isShowing = true;
    document->SetText(text);
    m_isShowing = false;
    Arrange();
}

void DocumentPage::ShowPictures() {
    m_pictures.clear();
    if (const auto document = m_application.OpenDocument()) {
        for (const DocumentPicture& picture : document->Pictures()) {
            m_pictures.push_back(std::make_unique<PictureWindow>(Handle(), picture));
        }
    }
    Arrange();
}

void DocumentPage::Arrange() {
    const RECT client = Client();
    const int gap = Pixels(Gap);
    const int margin = Pixels(Margin);
    const int width = Pixels(PaperWidth);
    const int left = std::max(gap, (static_cast<int>(client.right) - width) / 2);
    const POINT text{left + margin, gap + margin - m_scrolled};
    // The text's lines are counted at the width that they are shown in.
    const int textWidth = width - 2 * margin;
    RECT shown{};
    GetClientRect(m_text, &shown);
    if (shown.right != textWidth) {
        MoveWindow(m_text, text.x, text.y, textWidth, m_lineHeight, FALSE);
    }
    const auto lines = static_cast<int>(SendMessageW(m_text, EM_GETLINECOUNT, 0, 0));
    const int textHeight = std::min(lines * m_lineHeight + 1, HighestText);
    MoveWindow(m_text, text.x, text.y, textWidth, textHeight, TRUE);
    const int height = std::max(ArrangePictures(text, textHeight) + 2 * margin,
                                static_cast<int>(client.bottom) - 2 * gap);
    const bool isOpen = m_application.OpenDocument() != nullptr;
    ShowWindow(m_text, isOpen ? SW_SHOWNA : SW_HIDE);
    m_paper =
        isOpen ? RECT{left, gap - m_scrolled, left + width, gap - m_scrolled + height} : RECT{};
    SetScrollRange(height + 2 * gap);
    InvalidateRect(Handle(), nullptr, TRUE);
}

int DocumentPage::ArrangePictures(POINT text, int textHeight) {
    const auto document = m_application.OpenDocument();
    if (!document) {
        return textHeight;
    }
    const double points = textHeight * 72.0 / windows::DotsPerInch(Handle());
    const PageLayout layout = LayOut(document->Pictures(), points);
    for (std::size_t index = 0; index < m_pictures.size(); ++index) {
        const PicturePlace& place = layout.pictures[index];
        SetWindowPos(m_pictures[index]->Handle(), HWND_TOP, text.x + Pixels(place.left),
                     text.y + Pixels(place.top), std::max(1, Pixels(place.width)),
                     std::max(1, Pixels(place.height)), SWP_NOACTIVATE);
    }
    return Pixels(layout.bottom);
}

LRESULT DocumentPage::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_SIZE:
            Arrange();
            return 0;
        case WM_COMMAND:
            if (HIWORD(wide) == EN_CHANGE) {
                TakeText();
            }
            return 0;
        case WM_VSCROLL:
            Scroll(LOWORD(wide));
            return 0;
        case WM_MOUSEWHEEL:
            ScrollTo(m_scrolled - GET_WHEEL_DELTA_WPARAM(wide) * 3 * m_lineHeight / WHEEL_DELTA);
            return 0;
        case WM_SETFOCUS:
            Focus();
            return 0;
        default:
            return DefaultMessage(message, wide, low);
    }
}

void DocumentPage::Paint() {
    const windows::PaintContext context(Handle());
    FillRect(context.Get(), &m_paper, GetSysColorBrush(COLOR_WINDOW));
    FrameRect(context.Get(), &m_paper, GetSysColorBrush(COLOR_WINDOWFRAME));
}

void DocumentPage::SetScrollRange(int height) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    scroll.nMax = height - 1;
    scroll.nPage = static_cast<UINT>(std::max(1, static_cast<int>(Client().bottom)));
    scroll.nPos = m_scrolled;
    SetScrollInfo(Handle(), SB_VERT, &scroll, TRUE);
}

void DocumentPage::Scroll(WORD how) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_ALL;
    GetScrollInfo(Handle(), SB_VERT, &scroll);
    switch (how) {
        case SB_LINEUP:
            return ScrollTo(m_scrolled - m_lineHeight);
        case SB_LINEDOWN:
            return ScrollTo(m_scrolled + m_lineHeight);
        case SB_PAGEUP:
            return ScrollTo(m_scrolled - static_cast<int>(scroll.nPage));
        case SB_PAGEDOWN:
            return ScrollTo(m_scrolled + static_cast<int>(scroll.nPage));
        case SB_THUMBTRACK:
            return ScrollTo(scroll.nTrackPos);
        default:
            return;
    }
}

void DocumentPage::ScrollTo(int position) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_RANGE | SIF_PAGE;
    GetScrollInfo(Handle(), SB_VERT, &scroll);
    m_scrolled =
        std::clamp(position, 0, std::max(0, scroll.nMax + 1 - static_cast<int>(scroll.nPage)));
    Arrange();
}

RECT DocumentPage::Client() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return client;
}

int DocumentPage::Pixels(double points) const {
    return static_cast<int>(std::lround(points * windows::DotsPerInch(Handle()) / 72));
}

}  // namespace krv::bench
