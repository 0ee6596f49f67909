#include "windows/desktop/WindowsClipboard.h"

#include <windows.h>

#include <cstring>

#include "common/Error.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

constexpr int Tries = 10;
constexpr DWORD PauseMs = 20;

// Other programs keep it for a moment, as a rule.
bool OpenTheClipboard() {
    for (int count = 0; count < Tries; ++count) {
        if (OpenClipboard(nullptr) != FALSE) {
            return true;
        }
        Sleep(PauseMs);
    }
    return false;
}

// Null when there is no memory.
HGLOBAL Copied(const std::wstring& text) {
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (memory != nullptr) {
        std::memcpy(GlobalLock(memory), text.c_str(), size);
        GlobalUnlock(memory);
    }
    return memory;
}

}  // namespace

void WindowsClipboard::SetText(const std::string& text) {
    const HGLOBAL memory = Copied(ToWide(text));
    bool isSet = false;
    if (memory != nullptr && OpenTheClipboard()) {
        // The clipboard owns what it has taken.
        isSet = EmptyClipboard() != FALSE && SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
    }
    if (!isSet) {
        GlobalFree(memory);
        throw Error(ErrorNumber::Unspecified,
                    "The clipboard can't be used now.  Another program may be using it.");
    }
}

}  // namespace krv::windows
