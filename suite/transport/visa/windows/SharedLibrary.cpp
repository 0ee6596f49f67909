#include "suite/transport/visa/SharedLibrary.h"

#include <windows.h>

#include <filesystem>
#include <system_error>

namespace krv::suite {
namespace {

std::filesystem::path PathOf(const std::string& name) {
    return {std::u8string(name.begin(), name.end())};
}

// A name is looked for where the system's own libraries are, and nowhere that others may write to.
HMODULE Load(const std::filesystem::path& path) {
    const DWORD flags =
        path.has_parent_path() ? LOAD_WITH_ALTERED_SEARCH_PATH : LOAD_LIBRARY_SEARCH_SYSTEM32;
    const std::filesystem::path whole =
        path.has_parent_path() ? std::filesystem::absolute(path).make_preferred() : path;
    DWORD mode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
    const HMODULE module = LoadLibraryExW(whole.c_str(), nullptr, flags);
    const DWORD failure = GetLastError();
    SetThreadErrorMode(mode, nullptr);
    SetLastError(failure);
    return module;
}

}  // namespace

SharedLibrary LoadSharedLibrary(const std::string& name) {
    using Outcome = SharedLibrary::Outcome;
    const std::filesystem::path path = PathOf(name);
    if (const HMODULE module = Load(path); module != nullptr) {
        return {Outcome::Loaded, module, {}};
    }
    const DWORD failure = GetLastError();
    std::error_code ignored;
    // One that it needs may be the one that is missing.
    const bool isThere = path.has_parent_path() && std::filesystem::exists(path, ignored);
    const bool isMissing = failure == ERROR_FILE_NOT_FOUND || failure == ERROR_PATH_NOT_FOUND ||
                           (failure == ERROR_MOD_NOT_FOUND && !isThere);
    const bool isOther = failure == ERROR_BAD_EXE_FORMAT;
    return {isMissing ? Outcome::Missing : (isOther ? Outcome::OtherBits : Outcome::Refused),
            nullptr, std::system_category().message(static_cast<int>(failure))};
}

void* FunctionOf(const SharedLibrary& library, const char* name) noexcept {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library.handle), name));
}

std::vector<std::string> UsualVisaLibraries() {
#ifdef _WIN64
    return {"visa64.dll", "visa32.dll", "nivisa64.dll"};
#else
    return {"visa32.dll"};
#endif
}

}  // namespace krv::suite
