#include "windows/preview/PreviewWindow.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "windows/base/BusyCursor.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/DialogFont.h"
#include "windows/base/DisabledWindows.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"
#include "windows/base/WindowName.h"

namespace krv::windows {
namespace {

constexpr WindowKind PreviewKind{L"KRVPreview"};
constexpr const char* FiguresName = "figures";
// The window is on a monitor of another resolution now; not known to the headers' version.
constexpr UINT ResolutionChangedMessage = 0x02E0;

// At the usual resolution.
constexpr int UsualWidth = 1000;
constexpr int UsualHeight = 780;
constexpr int LeastWidth = 920;
constexpr int LeastHeight = 520;
constexpr int FigureLineHeight = 14;
constexpr int FigureLines = 10;
constexpr int FiguresMargin = 8;
constexpr int LabelsWidth = 80;
// What stands in front of a figure.
constexpr std::size_t LabelCharacters = 14;

constexpr double ZoomStep = 1.25;
constexpr double MoveStep = 0.125;

// Where windows are dark, so is the picture.
plots::Theme WindowsTheme() {
    const COLORREF color = GetSysColor(COLOR_WINDOW);
    constexpr int MiddleGrey = 3 * 128;
    const bool isDark = GetRValue(color) + GetGValue(color) + GetBValue(color) < MiddleGrey;
    return isDark ? plots::Theme::Dark : plots::Theme::Light;
}

HWND NewText(HWND parent) {
    return CreateWindowExW(0, L"STATIC", L"",
                           WS_CHILD | WS_VISIBLE | SS_LEFTNOWORDWRAP | SS_NOPREFIX, 0, 0, 0, 0,
                           parent, nullptr, ThisModule(), nullptr);
}

void DrawPixels(HDC context, const suite::picture::Picture& picture) {
    std::vector<std::uint32_t> pixels(picture.pixels.size());
    std::ranges::transform(picture.pixels, pixels.begin(), [](suite::picture::Color color) {
        return std::uint32_t{color.red} << 16U | std::uint32_t{color.green} << 8U | color.blue;
    });
    BITMAPINFO layout{};
    layout.bmiHeader.biSize = sizeof layout.bmiHeader;
    layout.bmiHeader.biWidth = picture.width;
    // Rows from the top.
    layout.bmiHeader.biHeight = -picture.height;
    layout.bmiHeader.biPlanes = 1;
    layout.bmiHeader.biBitCount = 32;
    layout.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(context, 0, 0, static_cast<DWORD>(picture.width),
                      static_cast<DWORD>(picture.height), 0, 0, 0,
                      static_cast<UINT>(picture.height), pixels.data(), &layout, DIB_RGB_COLORS);
}

}  // namespace

void PreviewWindow::Show(const waveform::DacCodes& codes, const std::string& source,
                         ports::WindowHandle owner) {
    const BusyCursor busy;
    m_view.emplace(codes);
    m_source = source;
    if (Handle() == nullptr) {
        CreateParts(reinterpret_cast<HWND>(owner));
    }
    ShowFigures();
    Redraw();
    DisabledWindows::WindowComes(Handle());
    if (IsIconic(Handle()) != 0) {
        ShowWindow(Handle(), SW_RESTORE);
    }
    ShowWindow(Handle(), SW_SHOW);
    SetForegroundWindow(Handle());
    UpdateWindow(Handle());
}

void PreviewWindow::CreateParts(HWND owner) {
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &screen);
    const int dots = static_cast<int>(DotsPerInch(owner));
    const RECT& work = screen.rcWork;
    const int width =
        std::min<int>(MulDiv(UsualWidth, dots, UsualDotsPerInch), work.right - work.left);
    const int height =
        std::min<int>(MulDiv(UsualHeight, dots, UsualDotsPerInch), work.bottom - work.top);
    Create(PreviewKind, {.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                         .parent = owner,
                         .left = work.left + (work.right - work.left - width) / 2,
                         .top = work.top + (work.bottom - work.top - height) / 2,
                         .width = width,
                         .height = height});
    if (Handle() == nullptr) {
        m_view.reset();
        throw Error(ErrorNumber::OutOfMemory, "There can't be another window");
    }
    m_labels = NewText(Handle());
    m_figures = NewText(Handle());
    AddWindowName(m_figures, FiguresName);
    Relayout();
}

void PreviewWindow::ShowFigures() {
    const std::string text = m_view->Figures();
    std::string labels;
    std::string figures;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        labels += text.substr(at, LabelCharacters) + '\n';
        figures += text.substr(at + LabelCharacters, end + 1 - at - LabelCharacters);
        at = end + 1;
    }
    SetWindowTextW(m_labels, ToWide(labels).c_str());
    SetWindowTextW(m_figures, ToWide(figures).c_str());
}

// The codes are given back.
void PreviewWindow::Close() {
    Destroy();
    m_view.reset();
    m_picture = {};
}

int PreviewWindow::Pixels(int units) const {
    return MulDiv(units, static_cast<int>(DotsPerInch(Handle())), UsualDotsPerInch);
}

int PreviewWindow::FiguresHeight() const {
    return Pixels(FigureLineHeight * FigureLines + 2 * FiguresMargin);
}

preview::PictureSize PreviewWindow::PictureArea() const {
    RECT client{};
    GetClientRect(Handle(), &client);
    return {std::max<int>(client.right, 1), std::max<int>(client.bottom - FiguresHeight(), 1),
            static_cast<double>(DotsPerInch(Handle())) / UsualDotsPerInch};
}

void PreviewWindow::Relayout() {
    // The texts have the former font until they are given this one.
    const Font former =
        std::exchange(m_font, NewDialogFont(static_cast<int>(DotsPerInch(Handle()))));
    const preview::PictureSize area = PictureArea();
    const int margin = Pixels(FiguresMargin);
    const int height = FiguresHeight() - 2 * margin;
    const int labels = Pixels(LabelsWidth);
    MoveWindow(m_labels, margin, area.height + margin, labels, height, TRUE);
    MoveWindow(m_figures, margin + labels, area.height + margin,
               std::max(area.width - labels - 2 * margin, 0), height, TRUE);
    for (const HWND text : {m_labels, m_figures}) {
        SendMessageW(text, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), TRUE);
    }
    Redraw();
}

void PreviewWindow::Redraw() {
    m_picture = {};
    InvalidateRect(Handle(), nullptr, FALSE);
    if (m_view) {
        const std::string caption = "Preview of " + m_source + ", " + m_view->RangeText();
        SetWindowTextW(Handle(), ToWide(caption).c_str());
    }
}

void PreviewWindow::Paint() {
    const PaintContext paint(Handle());
    if (!m_view) {
        return;
    }
    if (m_picture.pixels.empty()) {
        m_picture = m_view->Draw(PictureArea(), WindowsTheme());
    }
    DrawPixels(paint.Get(), m_picture);
}

LRESULT PreviewWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_SIZE:
            Relayout();
            return 0;
        case WM_MOUSEWHEEL:
            Wheel(wide, low);
            return 0;
        case WM_KEYDOWN:
            if (TakesKey(wide)) {
                return 0;
            }
            break;
        case WM_CLOSE:
            Close();
            return 0;
        case WM_GETMINMAXINFO:
            // No more than the screen has.
            reinterpret_cast<MINMAXINFO*>(low)->ptMinTrackSize = {
                std::min(Pixels(LeastWidth), GetSystemMetrics(SM_CXFULLSCREEN)),
                std::min(Pixels(LeastHeight), GetSystemMetrics(SM_CYFULLSCREEN))};
            return 0;
        case ResolutionChangedMessage: {
            const RECT& place = *reinterpret_cast<const RECT*>(low);
            SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
            Relayout();
            return 0;
        }
        case WM_SYSCOLORCHANGE:
            Redraw();
            break;
        case WM_DESTROY:
            // Also where the window goes with its owner.
            RemoveWindowName(m_figures, FiguresName);
            return 0;
        default:
            break;
    }
    return DefaultMessage(message, wide, low);
}

// The point under the mouse stays there.
void PreviewWindow::Wheel(WPARAM wide, LPARAM low) {
    m_wheel += GET_WHEEL_DELTA_WPARAM(wide);
    const int steps = m_wheel / WHEEL_DELTA;
    m_wheel -= steps * WHEEL_DELTA;
    if (steps == 0 || !m_view) {
        return;
    }
    POINT at{static_cast<short>(LOWORD(low)), static_cast<short>(HIWORD(low))};
    ScreenToClient(Handle(), &at);
    const double share = preview::WaveformView::TimeShareAt(PictureArea(), at.x);
    m_view->Zoom(std::pow(ZoomStep, steps), share);
    Redraw();
}

bool PreviewWindow::TakesKey(WPARAM key) {
    if (!m_view) {
        return false;
    }
    switch (key) {
        case VK_ESCAPE:
            Close();
            return true;
        case VK_ADD:
        case VK_OEM_PLUS:
        case VK_UP:
            m_view->Zoom(ZoomStep, 0.5);
            break;
        case VK_SUBTRACT:
        case VK_OEM_MINUS:
        case VK_DOWN:
            m_view->Zoom(1 / ZoomStep, 0.5);
            break;
        case VK_LEFT:
            m_view->Move(-MoveStep);
            break;
        case VK_RIGHT:
            m_view->Move(MoveStep);
            break;
        case VK_PRIOR:
            m_view->Move(-1);
            break;
        case VK_NEXT:
            m_view->Move(1);
            break;
        case VK_HOME:
            m_view->ShowAll();
            break;
        default:
            return false;
    }
    Redraw();
    return true;
}

}  // namespace krv::windows
