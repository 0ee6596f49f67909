#include "suite/windows/states/InstrumentStateControl.h"

#include "common/Error.h"
#include "suite/windows/states/StateInfoObject.h"
#include "windows/base/DisabledWindows.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/FittedMessageBox.h"
#include "windows/base/WideText.h"
#include "windows/com/ThemedScope.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using windows::NewText;
using windows::ToWide;

constexpr const wchar_t* BoxTitle = L"Instrument States";

}  // namespace

InstrumentStateControl::InstrumentStateControl(const windows::ComClass& description)
    : OleControl({description, IID_NULL,
                  windows::ToHimetric(StateWindow::NaturalSize, windows::UsualDotsPerInch)}) {}

InstrumentStateControl::~InstrumentStateControl() {
    Site().Deactivate();
}

HRESULT InstrumentStateControl::get_StateInfo(IDispatch** info) {
    return m_guard.Answer(info, [&] { return ComPtr<IDispatch>(m_info).Detach(); });
}

HRESULT InstrumentStateControl::put_StateInfo(IDispatch* info) {
    return m_guard.Run([&] {
        auto book = BookOf(info);
        if (info != nullptr && !book) {
            throw Error(ErrorNumber::TypeMismatch,
                        "This is not a list of states of the installed Tallyport suite.");
        }
        m_info = info;
        m_panel.Show(std::move(book));
    });
}

HRESULT InstrumentStateControl::putref_StateInfo(IDispatch* info) {
    return put_StateInfo(info);
}

HRESULT InstrumentStateControl::get_StatusText(BSTR* text) {
    return m_guard.Answer(text, [&] { return NewText(m_panel.Status()); });
}

HWND InstrumentStateControl::CreateControlWindow(HWND parent, const RECT& place) {
    HWND window = nullptr;
    m_guard.Run([&] { window = m_window.Create(parent, place); });
    return window;
}

// What a key starts may end the control's window, and the control with it.
bool InstrumentStateControl::TakesKey(MSG& message) {
    const ComPtr<IUnknown> alive(static_cast<ICvnInstrumentState*>(this));
    return m_window.TakesKey(message);
}

void InstrumentStateControl::DrawInactive(HDC context, const RECT& place) {
    RECT area = place;
    FillRect(context, &area, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    const std::string text = std::to_string(m_panel.States().size()) + " captured states";
    DrawTextW(context, ToWide(text).c_str(), -1, &area,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void InstrumentStateControl::Report(const std::string& text) {
    ShowBox(text, MB_OK | MB_ICONERROR);
}

bool InstrumentStateControl::Confirm(const std::string& question) {
    return ShowBox(question, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

int InstrumentStateControl::ShowBox(const std::string& text, UINT style) const {
    const windows::ThemedScope themed;
    const HWND owner = m_window.TopLevel();
    const windows::DisabledWindows others(owner);
    return windows::ShowFittedMessageBox(owner, ToWide(text), BoxTitle, style);
}

void InstrumentStateControl::SetBusy(bool busy) {
    if (busy) {
        m_busy.emplace();
    } else {
        m_busy.reset();
    }
}

}  // namespace krv::suite
