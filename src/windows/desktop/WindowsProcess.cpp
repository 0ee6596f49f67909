#include "windows/desktop/WindowsProcess.h"

#include <windows.h>

#include <array>

#include "windows/base/WideText.h"

namespace krv::windows {

std::uint32_t WindowsProcess::Id() {
    return GetCurrentProcessId();
}

std::string WindowsProcess::TemporaryFolder() {
    std::array<wchar_t, 255> folder{};
    // A length that doesn't fit is reported as the room that it needs.
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    return length < folder.size() ? ToUtf8({folder.data(), length}) : std::string();
}

}  // namespace krv::windows
