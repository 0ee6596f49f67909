// ThemedScope: while it lives, windows created by this thread get the common controls that the
// module's manifest asks for, whatever the program around it uses. Where the module has no manifest
// it does nothing.
#pragma once

#include <windows.h>

namespace krv::windows {

class ThemedScope {
 public:
    ThemedScope();
    ThemedScope(const ThemedScope&) = delete;
    ThemedScope& operator=(const ThemedScope&) = delete;
    ~ThemedScope();

 private:
    HANDLE m_context;
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};

}  // namespace krv::windows
