#include "windows/base/Module.h"

#include <vector>

namespace krv::windows {
HMODULE ThisModule() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&ThisModule), &module);
    return module;
}

std::wstring ThisModulePath() {
    std::vector<wchar_t> path(LongestPath);
    const DWORD length = GetModuleFileNameW(ThisModule(), path.data(), LongestPath);
    return {path.data(), length};
}

}  // namespace krv::windows
