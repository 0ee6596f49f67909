#include "bench/document/windows/DocumentPage.h"

#include <commctrl.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "bench/document/PageLayout.h"
#include "windows/base/WideText.h"
#include "windows/forms/Scale.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* DeskClass = L"KrvDocDesk";
constexpr const wchar_t* FontName = L"Times New Roman";
// Points.
constexpr double FontSize = 12;
constexpr double SheetWidth = 576;
constexpr double Margin = 54;
constexpr double DeskGap = 12;
// Windows that are higher don't get their mouse.
constexpr int HighestText = 24000;
// Someone selected picture n and wants it deleted.
constexpr UINT DeletePicture = WM_APP;

std::wstring WithLineBreaks(const std::string& text) {
    std::wstring shown;
    for (const wchar_t character : windows::ToWide(text)) {
        shown += character == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, character);
    }
    return shown;
}

std::string WithoutReturns(std::wstring text) {
    std::erase(text, L'\r');
    return windows::ToUtf8(text);
}

HFONT NewTextFont(UINT dotsPerInch) {
    LOGFONTW font{};
    font.lfHeight = -static_cast<LONG>(std::lround(FontSize * dotsPerInch / 72));
    font.lfQuality = CLEARTYPE_QUALITY;
    std::wstring(FontName).copy(font.lfFaceName, LF_FACESIZE - 1);
    return CreateFontIndirectW(&font);
}

int LineHeightOf(HFONT font, HWND window) {
    TEXTMETRICW metrics{};
    const HDC context = GetDC(window);
    const HGDIOBJ before = SelectObject(context, font);
    GetTextMetricsW(context, &metrics);
    SelectObject(context, before);
    ReleaseDC(window, context);
    return std::max(1, static_cast<int>(metrics.tmHeight));
}

}  // namespace

DocumentPage::DocumentPage(HWND parent, DocumentApplication& application)
    : m_application(application), m_font(NewTextFont(windows::DotsPerInch(parent))) {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &DocumentPage::DeskProcedure;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_APPWORKSPACE);
    description.lpszClassName = DeskClass;
    RegisterClassExW(&description);
    CreateWindowExW(0, DeskClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_VSCROLL, 0, 0,
                    0, 0, parent, nullptr, nullptr, this);
    m_sheet = CreateWindowExW(WS_EX_CONTROLPARENT, WC_STATICW, L"",
                              WS_CHILD | WS_CLIPCHILDREN | WS_BORDER | SS_WHITERECT | SS_NOTIFY, 0,
                              0, 0, 0, m_handle, nullptr, nullptr, nullptr);
    m_text = CreateWindowExW(0, WC_EDITW, L"",
                             WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_MULTILINE |
                                 ES_AUTOVSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
                             0, 0, 0, 0, m_sheet, nullptr, nullptr, nullptr);
    SendMessageW(m_text, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    SendMessageW(m_text, EM_LIMITTEXT, 0, 0);
    SendMessageW(m_text, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    SetWindowSubclass(m_text, &DocumentPage::TextProcedure, 1, reinterpret_cast<DWORD_PTR>(this));
    SetWindowSubclass(m_sheet, &DocumentPage::TextProcedure, 2, reinterpret_cast<DWORD_PTR>(this));
    m_lineHeight = LineHeightOf(m_font, m_text);
    ShowDocument();
}

DocumentPage::~DocumentPage() {
    m_pictures.clear();
    RemoveWindowSubclass(m_text, &DocumentPage::TextProcedure, 1);
    RemoveWindowSubclass(m_sheet, &DocumentPage::TextProcedure, 2);
    SetWindowLongPtrW(m_handle, GWLP_USERDATA, 0);
    DestroyWindow(m_handle);
    DeleteObject(m_font);
}

void DocumentPage::Follow(DocumentChange change) {
    switch (change) {
        case DocumentChange::Document:
            ShowDocument();
            break;
        case DocumentChange::Text:
            ShowText();
            break;
        case DocumentChange::Pictures:
            ShowPictures();
            break;
        default:
            break;
    }
}

void DocumentPage::ShowDocument() {
    m_scrolled = 0;
    ShowWindow(m_sheet, m_application.OpenDocument() ? SW_SHOWNA : SW_HIDE);
    ShowText();
    ShowPictures();
}

// What the user has typed is there already.
void DocumentPage::ShowText() {
    const auto& document = m_application.OpenDocument();
    if (m_isShowing) {
        return;
    }
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
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(m_text)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(m_text, text.data(), static_cast<int>(text.size()))));
    m_isShowing = true;
    document->SetText(WithoutReturns(std::move(text)));
    m_isShowing = false;
    Arrange();
    ShowCaret();
}

void DocumentPage::ShowPictures() {
    m_pictures.clear();
    if (const auto& document = m_application.OpenDocument()) {
        for (const DocumentPicture& picture : document->Pictures()) {
            const auto index = static_cast<WPARAM>(m_pictures.size());
            m_pictures.push_back(std::make_unique<PictureWindow>(m_sheet, picture, [this, index] {
                PostMessageW(m_handle, DeletePicture, index, 0);
            }));
        }
    }
    Arrange();
}

void DocumentPage::Arrange() {
    RECT desk{};
    GetClientRect(m_handle, &desk);
    const auto& document = m_application.OpenDocument();
    if (!document) {
        return;
    }
    const int margin = Pixels(Margin);
    const int sheetWidth = Pixels(SheetWidth);
    const int textWidth = sheetWidth - 2 * margin;
    // The text's lines are counted at the width that they are shown in.
    RECT shown{};
    GetClientRect(m_text, &shown);
    if (shown.right != textWidth) {
        MoveWindow(m_text, margin, margin, textWidth, m_lineHeight, FALSE);
    }
    const int textHeight = TextHeight();
    MoveWindow(m_text, margin, margin, textWidth, textHeight, TRUE);
    const double dots = Pixels(72);
    const PageLayout layout = LayOut(document->Pictures(), textHeight * 72 / dots);
    for (std::size_t index = 0; index < m_pictures.size(); ++index) {
        const PicturePlace& place = layout.pictures[index];
        SetWindowPos(m_pictures[index]->Handle(), HWND_TOP, margin + Pixels(place.left),
                     margin + Pixels(place.top), std::max(1, Pixels(place.width)),
                     std::max(1, Pixels(place.height)), SWP_NOACTIVATE);
    }
    const int gap = Pixels(DeskGap);
    const int sheetHeight =
        std::max(2 * margin + Pixels(layout.bottom), static_cast<int>(desk.bottom) - 2 * gap);
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    scroll.nMax = sheetHeight + 2 * gap - 1;
    scroll.nPage = static_cast<UINT>(std::max(1, static_cast<int>(desk.bottom)));
    m_scrolled =
        std::clamp(m_scrolled, 0, std::max(0, scroll.nMax + 1 - static_cast<int>(scroll.nPage)));
    scroll.nPos = m_scrolled;
    SetScrollInfo(m_handle, SB_VERT, &scroll, TRUE);
    MoveWindow(m_sheet, std::max(gap, (static_cast<int>(desk.right) - sheetWidth) / 2),
               gap - m_scrolled, sheetWidth, sheetHeight, TRUE);
}

LRESULT CALLBACK DocumentPage::DeskProcedure(HWND window, UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_NCCREATE) {
        auto* created =
            static_cast<DocumentPage*>(reinterpret_cast<const CREATESTRUCTW*>(low)->lpCreateParams);
        created->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<DocumentPage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr && self->m_text != nullptr ? self->Handle(message, wide, low)
                                                      : DefWindowProcW(window, message, wide, low);
}

LRESULT DocumentPage::Handle(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_SIZE:
            Arrange();
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
        case DeletePicture:
            if (const auto document = m_application.OpenDocument();
                document && wide < document->Pictures().size()) {
                document->RemovePicture(wide);
                Focus();
            }
            return 0;
        default:
            return DefWindowProcW(m_handle, message, wide, low);
    }
}

// For the sheet, which passes on what its text reports, and for the text.
LRESULT CALLBACK DocumentPage::TextProcedure(HWND window, UINT message, WPARAM wide, LPARAM low,
                                             UINT_PTR, DWORD_PTR page) {
    auto& self = *reinterpret_cast<DocumentPage*>(page);
    if (window == self.m_sheet) {
        if (message == WM_COMMAND && HIWORD(wide) == EN_CHANGE) {
            self.TakeText();
            return 0;
        }
        if (message == WM_LBUTTONDOWN) {
            self.Focus();
            return 0;
        }
        return DefSubclassProc(window, message, wide, low);
    }
    if (message == WM_MOUSEWHEEL) {
        return SendMessageW(self.m_handle, message, wide, low);
    }
    const LRESULT result = DefSubclassProc(window, message, wide, low);
    if (message == WM_KEYDOWN) {
        self.ShowCaret();
    }
    return result;
}

void DocumentPage::Scroll(WORD how) {
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_ALL;
    GetScrollInfo(m_handle, SB_VERT, &scroll);
    const int page = static_cast<int>(scroll.nPage);
    switch (how) {
        case SB_LINEUP:
            return ScrollTo(m_scrolled - m_lineHeight);
        case SB_LINEDOWN:
            return ScrollTo(m_scrolled + m_lineHeight);
        case SB_PAGEUP:
            return ScrollTo(m_scrolled - page);
        case SB_PAGEDOWN:
            return ScrollTo(m_scrolled + page);
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return ScrollTo(scroll.nTrackPos);
        case SB_TOP:
            return ScrollTo(0);
        case SB_BOTTOM:
            return ScrollTo(scroll.nMax);
        default:
            return;
    }
}

void DocumentPage::ScrollTo(int position) {
    m_scrolled = position;
    Arrange();
}

// The edit control is as high as its text and never scrolls by itself.
void DocumentPage::ShowCaret() {
    POINT caret{};
    if (GetFocus() != m_text || GetCaretPos(&caret) == FALSE) {
        return;
    }
    MapWindowPoints(m_text, m_handle, &caret, 1);
    RECT desk{};
    GetClientRect(m_handle, &desk);
    const int below = static_cast<int>(caret.y) + 2 * m_lineHeight - static_cast<int>(desk.bottom);
    const int above = m_lineHeight - static_cast<int>(caret.y);
    if (below > 0 || above > 0) {
        ScrollTo(m_scrolled + (below > 0 ? below : -above));
    }
}

int DocumentPage::TextHeight() const {
    const auto lines = static_cast<int>(SendMessageW(m_text, EM_GETLINECOUNT, 0, 0));
    return std::min(lines * m_lineHeight + 1, HighestText);
}

int DocumentPage::Pixels(double points) const {
    return static_cast<int>(std::lround(points * windows::DotsPerInch(m_handle) / 72));
}

}  // namespace krv::bench
