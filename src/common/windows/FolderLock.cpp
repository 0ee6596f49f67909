#include "common/FolderLock.h"

#include <windows.h>

#include <algorithm>
#include <string>
#include <system_error>

namespace krv {
namespace {

// A mutex of the folder's name, in which no backslash may stand.
std::wstring NameOf(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::wstring name = std::filesystem::weakly_canonical(folder, ignored).wstring();
    CharUpperW(name.data());
    std::replace(name.begin(), name.end(), L'\\', L'/');
    return L"Local\\KRV folder " + name;
}

}  // namespace

FolderLock::FolderLock(const std::filesystem::path& folder) noexcept {
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, NameOf(folder).c_str());
    if (mutex != nullptr && GetLastError() != ERROR_ALREADY_EXISTS) {
        m_handle = reinterpret_cast<std::intptr_t>(mutex);
    } else if (mutex != nullptr) {
        CloseHandle(mutex);
    }
}

FolderLock::~FolderLock() {
    if (IsHeld()) {
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
    }
}

}  // namespace krv
