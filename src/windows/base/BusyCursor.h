// BusyCursor: the hourglass while it lives, then the cursor from before.
#pragma once

#include <windows.h>

namespace krv::windows {

class BusyCursor {
 public:
    BusyCursor() : m_previous(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
    ~BusyCursor() { SetCursor(m_previous); }

 private:
    HCURSOR m_previous;
};

}  // namespace krv::windows
