#include "bench/shared/windows/GeneratorBand.h"

#include <algorithm>
#include <array>
#include <cwchar>

#include "bench/shared/windows/WindowText.h"
#include "common/Error.h"
#include "ports/suite/ProgIds.h"
#include "windows/automation/LateBound.h"
#include "windows/base/DeviceContext.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr const wchar_t* ClassName = L"KrvBookBand";
constexpr const char* ControlName = ports::ProgId::KRVControl;
constexpr int LowestHeight = 34;
constexpr int Gap = 6;

// What the add-in's macros call for each button of the command bar.
constexpr std::array<const wchar_t*, 7> Commands{
    L"DoAbout",        L"DoConnect",         L"DoConnect", L"DoSetup",
    L"DoDataTransfer", L"DoSaveScreenImage", L"DoHelp"};

}  // namespace

GeneratorBand::GeneratorBand(HWND parent, const CommandBarModel& bar,
                             std::function<void(const std::string&)> report)
    : m_bar(bar),
      m_report(std::move(report)),
      m_font(NewMessageFont(windows::DotsPerInch(parent))) {
    const std::wstring title = windows::ToWide(bar.Name());
    Create({ClassName}, {.title = title.c_str(),
                         .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                         .extendedStyle = WS_EX_CONTROLPARENT,
                         .parent = parent});
    m_buttons =
        CreateWindowExW(0, TOOLBARCLASSNAMEW, L"",
                        WS_CHILD | WS_VISIBLE | TBSTYLE_LIST | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                            CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
                        0, 0, 0, 0, Handle(), nullptr, nullptr, nullptr);
    SendMessageW(m_buttons, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(m_buttons, TB_SETBITMAPSIZE, 0, 0);
    SendMessageW(m_buttons, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.get()), FALSE);
    ShowButtons();
}

int GeneratorBand::Height() const {
    const int control = m_control != nullptr ? static_cast<int>(m_control->Size().cy) : 0;
    return std::max(control + Scaled(Gap), Scaled(LowestHeight));
}

void GeneratorBand::PutControl(IDispatch* application, IDispatch* document, PropertyBag* saved) {
    // An instrument may take one connection only: the former control's ends first.
    m_control.reset();
    CLSID id{};
    if (FAILED(CLSIDFromProgID(windows::ToWide(ControlName).c_str(), &id))) {
        m_notice = "The control ";
        m_notice += ControlName;
        m_notice +=
            " is not registered on this computer.  Register KRVControl.dll with regsvr32 "
            "and start this program again.";
        return;
    }
    try {
        m_control = std::make_unique<windows::ControlContainer>(Handle(), id, document, saved);
        const windows::LateBound control(m_control->Control());
        control.PutObject(L"ConnectedApplication", application);
        // As the add-in does: the buttons show from the start whether an instrument is connected.
        control.Call(L"UpdateConnectedStatus");
    } catch (const Error& error) {
        m_notice =
            std::string("The control ") + ControlName + " doesn't start: " + error.Description();
        m_control.reset();
    }
    Arrange();
}

// Rebuilt as a whole: there are seven, and they change when an instrument is connected.
void GeneratorBand::ShowButtons() {
    while (SendMessageW(m_buttons, TB_DELETEBUTTON, 0, 0) != FALSE) {
    }
    for (int position = 1; position <= m_bar.Count(); ++position) {
        const CommandBarButton& model = m_bar.At(position);
        const std::wstring caption = windows::ToWide(model.caption);
        TBBUTTON button{};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = position;
        button.fsState = static_cast<BYTE>((model.isEnabled ? TBSTATE_ENABLED : 0) |
                                           (model.isVisible ? 0 : TBSTATE_HIDDEN));
        button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE | BTNS_SHOWTEXT | BTNS_NOPREFIX;
        button.iString = reinterpret_cast<INT_PTR>(caption.c_str());
        SendMessageW(m_buttons, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    }
    Arrange();
}

void GeneratorBand::Move(const RECT& place) {
    MoveWindow(Handle(), place.left, place.top, place.right - place.left, place.bottom - place.top,
               TRUE);
    Arrange();
}

// The control at the left; the buttons at the right, as wide as they are.
void GeneratorBand::Arrange() {
    RECT client{};
    GetClientRect(Handle(), &client);
    int left = Scaled(Gap);
    if (m_control != nullptr) {
        const SIZE size = m_control->Size();
        const int top = (static_cast<int>(client.bottom) - static_cast<int>(size.cy)) / 2;
        m_control->Move({left, top, left + size.cx, top + size.cy});
        left += static_cast<int>(size.cx) + Scaled(Gap);
    }
    SIZE buttons{};
    SendMessageW(m_buttons, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&buttons));
    const int width =
        std::min(static_cast<int>(buttons.cx), std::max(0, static_cast<int>(client.right) - left));
    const int height = std::max(static_cast<int>(buttons.cy), Scaled(24));
    MoveWindow(m_buttons, static_cast<int>(client.right) - width,
               (static_cast<int>(client.bottom) - height) / 2, width, height, TRUE);
    InvalidateRect(Handle(), nullptr, TRUE);
}

LRESULT GeneratorBand::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    if (message == WM_COMMAND && reinterpret_cast<HWND>(low) == m_buttons) {
        Click(LOWORD(wide));
        return 0;
    }
    if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(low)->code == TTN_GETDISPINFOW) {
        GiveToolTip(*reinterpret_cast<NMTTDISPINFOW*>(low));
        return 0;
    }
    return DefaultMessage(message, wide, low);
}

void GeneratorBand::Paint() {
    const windows::PaintContext paint(Handle());
    const HDC context = paint.Get();
    RECT place{};
    GetClientRect(Handle(), &place);
    RECT line{0, place.bottom - 1, place.right, place.bottom};
    FillRect(context, &line, GetSysColorBrush(COLOR_BTNSHADOW));
    if (m_control == nullptr) {
        RECT buttons{};
        GetWindowRect(m_buttons, &buttons);
        MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&buttons), 2);
        place.left += Scaled(Gap);
        place.right = buttons.left - Scaled(Gap);
        const std::wstring text = windows::ToWide(m_notice);
        const windows::SelectedObject font(context, m_font.get());
        SetBkMode(context, TRANSPARENT);
        RECT needed = place;
        DrawTextW(context, text.c_str(), -1, &needed, DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
        place.top += std::max(0, static_cast<int>((place.bottom - needed.bottom) / 2));
        DrawTextW(context, text.c_str(), -1, &place, DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
}

void GeneratorBand::Click(int position) {
    if (m_control == nullptr) {
        m_report(m_notice);
        return;
    }
    const auto index = static_cast<std::size_t>(position - 1);
    if (index >= Commands.size()) {
        return;
    }
    try {
        const windows::LateBound control(m_control->Control());
        // The first argument of PutData has no meaning; 0 asks for files first.
        if (std::wcscmp(Commands[index], L"DoDataTransfer") == 0) {
            control.Call(Commands[index], {_variant_t(0L), _variant_t(short{0})});
        } else {
            control.Call(Commands[index]);
        }
    } catch (const Error& error) {
        m_report(error.Description());
    }
}

void GeneratorBand::GiveToolTip(NMTTDISPINFOW& request) {
    const auto position = static_cast<std::int32_t>(request.hdr.idFrom);
    if (position >= 1 && position <= m_bar.Count()) {
        m_toolTip = windows::ToWide(m_bar.At(position).tooltipText);
        request.lpszText = m_toolTip.data();
    }
}

int GeneratorBand::Scaled(int pixels) const {
    return MulDiv(pixels, static_cast<int>(windows::DotsPerInch(Handle())),
                  USER_DEFAULT_SCREEN_DPI);
}

}  // namespace krv::bench
