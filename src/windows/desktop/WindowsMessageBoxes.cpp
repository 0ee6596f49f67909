#include "windows/desktop/WindowsMessageBoxes.h"

#include <windows.h>

#include "windows/base/DisabledWindows.h"
#include "windows/base/FittedMessageBox.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

UINT StyleOf(ports::MessageIcon icon) {
    switch (icon) {
        case ports::MessageIcon::Critical:
            return MB_ICONERROR;
        case ports::MessageIcon::Exclamation:
            return MB_ICONEXCLAMATION;
        default:
            return 0;
    }
}

UINT StyleOf(ports::MessageButtons buttons) {
    switch (buttons) {
        case ports::MessageButtons::OkCancel:
            return MB_OKCANCEL;
        case ports::MessageButtons::YesNo:
            return MB_YESNO;
        case ports::MessageButtons::RetryCancel:
            return MB_RETRYCANCEL;
        default:
            return MB_OK;
    }
}

}  // namespace

ports::MessageAnswer WindowsMessageBoxes::Show(const ports::Message& message) {
    const HWND owner = m_screen.ActiveWindow();
    const DisabledWindows others(owner);
    const int answer =
        ShowFittedMessageBox(owner, ToWide(message.text), ToWide(message.title),
                             MB_TASKMODAL | StyleOf(message.icon) | StyleOf(message.buttons));
    switch (answer) {
        case IDYES:
            return ports::MessageAnswer::Yes;
        case IDNO:
            return ports::MessageAnswer::No;
        case IDRETRY:
            return ports::MessageAnswer::Retry;
        case IDCANCEL:
            return message.buttons == ports::MessageButtons::Ok ? ports::MessageAnswer::Ok
                                                                : ports::MessageAnswer::Cancel;
        default:
            return ports::MessageAnswer::Ok;
    }
}

}  // namespace krv::windows
