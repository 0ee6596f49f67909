#include "windows/base/LastColumn.h"

// After windows.h, which it needs.
#include <commctrl.h>

namespace krv::windows {

void ExtendLastColumn(HWND list) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const LRESULT last = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) - 1;
    RECT area{};
    GetClientRect(list, &area);
    LRESULT rest = area.right;
    for (LRESULT column = 0; column < last; ++column) {
        rest -= SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0);
    }
    if (last >= 0 && rest > 0) {
        SendMessageW(list, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(last), rest);
    }
}

}  // namespace krv::windows
