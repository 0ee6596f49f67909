#include "windows/forms/FormToolTips.h"

#include <commctrl.h>

#include <string>

#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::windows {

void FormToolTips::Create(HWND form) {
    m_form = form;
    m_tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX,
                             CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, form,
                             nullptr, ThisModule(), nullptr);
}

void FormToolTips::Add(const ControlWindow& control) const {
    Send(TTM_ADDTOOLW, control);
}

void FormToolTips::Update(const ControlWindow& control) const {
    Send(TTM_UPDATETIPTEXTW, control);
}

void FormToolTips::SetWidth(int width) const {
    SendMessageW(m_tips, TTM_SETMAXTIPWIDTH, 0, width);
}

void FormToolTips::Send(UINT message, const ControlWindow& control) const {
    if (control.Handle() == nullptr) {
        return;
    }
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = m_form;
    tool.uId = reinterpret_cast<UINT_PTR>(control.Handle());
    std::wstring text = ToWide(control.Model().ToolTipText.Get());
    tool.lpszText = text.data();
    SendMessageW(m_tips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace krv::windows
