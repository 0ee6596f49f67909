#include "windows/desktop/WindowsMessageBoxes.h"

#include <windows.h>

#include "windows/text/WideText.h"

namespace krv::windows {
namespace {

UINT StyleOf(desktop::MessageIcon icon) {
    switch (icon) {
        case desktop::MessageIcon::Critical:
            return MB_ICONERROR;
        case desktop::MessageIcon::Exclamation:
            return MB_ICONEXCLAMATION;
        default:
            return 0;
    }
}

UINT StyleOf(desktop::MessageButtons buttons) {
    switch (buttons) {
        case desktop::MessageButtons::OkCancel:
            return MB_OKCANCEL;
        case desktop::MessageButtons::YesNo:
            return MB_YESNO;
        case desktop::MessageButtons::RetryCancel:
            return MB_RETRYCANCEL;
        default:
            return MB_OK;
    }
}

}  // namespace

desktop::MessageAnswer WindowsMessageBoxes::Show(const desktop::Message& message) {
    const int answer = MessageBoxW(m_screen.ActiveWindow(), ToWide(message.text).c_str(),
                                   ToWide(message.title).c_str(),
                                   MB_TASKMODAL | StyleOf(message.icon) | StyleOf(message.buttons));
    switch (answer) {
        case IDYES:
            return desktop::MessageAnswer::Yes;
        case IDNO:
            return desktop::MessageAnswer::No;
        case IDRETRY:
            return desktop::MessageAnswer::Retry;
        case IDCANCEL:
            return message.buttons == desktop::MessageButtons::Ok ? desktop::MessageAnswer::Ok
                                                                  : desktop::MessageAnswer::Cancel;
        default:
            return desktop::MessageAnswer::Ok;
    }
}

}  // namespace krv::windows
