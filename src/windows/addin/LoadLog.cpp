#include "windows/addin/LoadLog.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

constexpr std::uintmax_t LargestLog = 256 * 1024;

std::string ProgramName() {
    std::array<wchar_t, MAX_PATH> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return ToUtf8(std::filesystem::path(std::wstring(path.data(), length)).filename().wstring());
}

std::string Now() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", now.wYear, now.wMonth,
                  now.wDay, now.wHour, now.wMinute, now.wSecond);
    return text.data();
}

void Append(const std::filesystem::path& file, const std::string& text) {
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    if (std::filesystem::file_size(file, ignored) > LargestLog && !ignored) {
        std::filesystem::path old = file;
        std::filesystem::rename(file, old.replace_extension(".old"), ignored);
    }
    std::ofstream stream(file, std::ios::app);
    stream << Now() << "  " << ProgramName() << ' ' << sizeof(void*) * 8 << "-bit  "
           << ToUtf8(ThisModulePath()) << "  " << text << '\n';
}

}  // namespace

std::filesystem::path LogFile() {
    wchar_t* folder = nullptr;
    std::filesystem::path file;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder))) {
        file = std::filesystem::path(folder) / "Tallyport" / "KRVAddIn.log";
    }
    CoTaskMemFree(folder);
    return file;
}

void WriteToLog(const std::string& text) noexcept {
    try {
        if (const auto file = LogFile(); !file.empty()) {
            Append(file, text);
        }
    } catch (const std::exception&) {
        // Whoever can't write a log can't tell of it either.
    }
}

}  // namespace krv::windows
