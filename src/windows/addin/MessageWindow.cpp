#include "windows/addin/MessageWindow.h"

#include <utility>

namespace krv::windows {
namespace {

constexpr WindowKind MessageKind{L"KRVAddInMessages"};
constexpr UINT WorkMessage = WM_APP;
constexpr UINT_PTR RetryTimer = 1;
constexpr UINT RetryMs = 500;

}  // namespace

MessageWindow::MessageWindow(std::function<void()> work) : m_work(std::move(work)) {
    Create(MessageKind, {.parent = HWND_MESSAGE});
}

void MessageWindow::Post() {
    if (!std::exchange(m_isPosted, true)) {
        PostMessageW(Handle(), WorkMessage, 0, 0);
    }
}

void MessageWindow::PostLater() {
    SetTimer(Handle(), RetryTimer, RetryMs, nullptr);
}

LRESULT MessageWindow::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_TIMER) {
        KillTimer(Handle(), RetryTimer);
        Post();
        return 0;
    }
    if (message == WorkMessage) {
        m_isPosted = false;
        // The work may end this.
        const auto work = m_work;
        work();
        return 0;
    }
    return DefaultMessage(message, wide, low);
}

}  // namespace krv::windows
