// MessageWindow: work that waits until the host has done what it is doing: it runs from the
// thread's message loop, where the host takes calls. For the thread that makes it.
#pragma once

#include <windows.h>

#include <functional>

#include "windows/base/WindowClass.h"

namespace krv::windows {

class MessageWindow : public WindowClass<MessageWindow> {
 public:
    explicit MessageWindow(std::function<void()> work);

    // The work runs once, however often it is asked for before.
    void Post();
    // The same, in a while: the host was busy.
    void PostLater();

 private:
    friend WindowClass<MessageWindow>;
    LRESULT HandleMessage(UINT message, WPARAM wide, LPARAM low);

    std::function<void()> m_work;
    bool m_isPosted = false;
};

}  // namespace krv::windows
