// What is installed on this computer, from its registry and its files.
#include <windows.h>
// After windows.h, which it needs.
#include <winver.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "common/Error.h"
#include "doctor/InstalledSystem.h"
#include "doctor/ProgramHeader.h"
#include "windows/base/Handles.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::doctor {
namespace {

using windows::ToUtf8;
using windows::ToWide;

constexpr int ThisWordSize = static_cast<int>(8 * sizeof(void*));

// On a 32-bit system there is no such folder.
bool Is64BitSystem() {
    std::array<wchar_t, MAX_PATH> folder{};
    return ThisWordSize == 64 || GetSystemWow64DirectoryW(folder.data(), MAX_PATH) != 0;
}

HKEY RootOf(Scope scope) {
    return scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

// The names of keys say which word size is meant.
REGSAM OwnView() {
    return Is64BitSystem() ? KEY_WOW64_64KEY : 0;
}

// Null where it isn't there.
windows::RegistryHandle OpenKey(const RegistryKey& key, REGSAM rights) {
    HKEY opened = nullptr;
    const LSTATUS status =
        RegOpenKeyExW(RootOf(key.scope), ToWide(key.path).c_str(), 0, rights | OwnView(), &opened);
    return windows::RegistryHandle(status == ERROR_SUCCESS ? opened : nullptr);
}

std::string Message(DWORD error) {
    std::array<wchar_t, 1024> text{};
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                       0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 && text[length - 1] <= L' ') {
        --length;
    }
    return length == 0 ? "error " + std::to_string(error)
                       : ToUtf8(std::wstring_view(text.data(), length));
}

void RequireDone(LSTATUS status, const RegistryKey& key) {
    if (status != ERROR_SUCCESS) {
        throw Error(ErrorNumber::PathFileAccess,
                    "The registry key " + key.path +
                        " can't be changed: " + Message(static_cast<DWORD>(status)));
    }
}

std::string VersionOf(const std::wstring& file) {
    DWORD none = 0;
    std::vector<std::byte> resource(GetFileVersionInfoSizeW(file.c_str(), &none));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    if (resource.empty() ||
        GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(resource.size()),
                            resource.data()) == FALSE ||
        VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void**>(&fixed), &length) ==
            FALSE) {
        return {};
    }
    return std::to_string(HIWORD(fixed->dwFileVersionMS)) + '.' +
           std::to_string(LOWORD(fixed->dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(fixed->dwFileVersionLS));
}

// The folder of the system's programs of a word size, as this program reaches it.
std::wstring SystemFolder(int wordSize) {
    std::array<wchar_t, MAX_PATH> folder{};
    if (wordSize == ThisWordSize) {
        GetSystemDirectoryW(folder.data(), MAX_PATH);
        return folder.data();
    }
    if (wordSize == 32) {
        GetSystemWow64DirectoryW(folder.data(), MAX_PATH);
        return folder.data();
    }
    GetWindowsDirectoryW(folder.data(), MAX_PATH);
    return folder.data() + std::wstring(L"\\sysnative");
}

// Runs a program to its end. Throws Error.
DWORD ExitCodeOf(std::wstring command) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                       nullptr, &start, &process) == FALSE) {
        throw Error(ErrorNumber::FileNotFound, ToUtf8(command) + ": " + Message(GetLastError()));
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

class WindowsSystem final : public InstalledSystem {
 public:
    [[nodiscard]] std::string Name() const override {
        const RegistryKey key{Scope::Machine, "Software\\Microsoft\\Windows NT\\CurrentVersion"};
        return Text(key, "ProductName").value_or("Windows") + ", build " +
               Text(key, "CurrentBuildNumber").value_or("unknown") + ", " +
               std::to_string(WordSizes().front()) + " bit";
    }
    [[nodiscard]] std::string ProgramFile() const override {
        return ToUtf8(windows::ThisModulePath());
    }
    [[nodiscard]] std::string AddInLog() const override {
        const wchar_t* const folder = _wgetenv(L"LOCALAPPDATA");
        return folder == nullptr ? std::string() : ToUtf8(folder) + "\\Tallyport\\KRVAddIn.log";
    }
    [[nodiscard]] int OwnWordSize() const override { return ThisWordSize; }
    [[nodiscard]] std::vector<int> WordSizes() const override {
        return Is64BitSystem() ? std::vector<int>{64, 32} : std::vector<int>{32};
    }

    [[nodiscard]] std::optional<std::string> Text(const RegistryKey& key,
                                                  const std::string& name) const override {
        const auto opened = OpenKey(key, KEY_QUERY_VALUE);
        std::vector<wchar_t> text(windows::LongestPath);
        DWORD size = windows::LongestPath * sizeof(wchar_t);
        if (opened == nullptr ||
            RegGetValueW(opened.get(), nullptr, ToWide(name).c_str(), RRF_RT_REG_SZ, nullptr,
                         text.data(), &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        return ToUtf8(text.data());
    }

    [[nodiscard]] std::optional<std::uint32_t> Number(const RegistryKey& key,
                                                      const std::string& name) const override {
        const auto opened = OpenKey(key, KEY_QUERY_VALUE);
        DWORD number = 0;
        DWORD size = sizeof number;
        if (opened == nullptr ||
            RegGetValueW(opened.get(), nullptr, ToWide(name).c_str(), RRF_RT_REG_DWORD, nullptr,
                         &number, &size) != ERROR_SUCCESS) {
            return std::nullopt;
        }
        return number;
    }

    [[nodiscard]] std::vector<RegistryValue> Values(const RegistryKey& key) const override {
        std::vector<RegistryValue> values;
        const auto opened = OpenKey(key, KEY_QUERY_VALUE);
        std::vector<wchar_t> name(windows::LongestPath);
        std::vector<std::byte> bytes(std::size_t{1} << 16);
        for (DWORD index = 0; opened != nullptr; ++index) {
            DWORD length = windows::LongestPath;
            auto size = static_cast<DWORD>(bytes.size());
            const LSTATUS status =
                RegEnumValueW(opened.get(), index, name.data(), &length, nullptr, nullptr,
                              reinterpret_cast<BYTE*>(bytes.data()), &size);
            if (status != ERROR_SUCCESS) {
                break;
            }
            values.push_back({ToUtf8(std::wstring_view(name.data(), length)),
                              {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)}});
        }
        return values;
    }

    [[nodiscard]] std::optional<ProgramFacts> Facts(const std::string& file) const override {
        const std::wstring path = ToWide(file);
        std::ifstream content(std::filesystem::path(path), std::ios::binary);
        if (!content) {
            return std::nullopt;
        }
        return ProgramFacts{ProgramWordSize(content), VersionOf(path)};
    }

    [[nodiscard]] std::string LoadFault(const std::string& file) const override {
        const HMODULE library =
            LoadLibraryExW(ToWide(file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
        if (library == nullptr) {
            return Message(GetLastError());
        }
        const bool isServer = GetProcAddress(library, "DllGetClassObject") != nullptr;
        FreeLibrary(library);
        return isServer ? "" : "It has no classes.";
    }

    void SetNumber(const RegistryKey& key, const std::string& name, std::uint32_t value) override {
        HKEY made = nullptr;
        RequireDone(RegCreateKeyExW(RootOf(key.scope), ToWide(key.path).c_str(), 0, nullptr,
                                    REG_OPTION_NON_VOLATILE, KEY_SET_VALUE | OwnView(), nullptr,
                                    &made, nullptr),
                    key);
        const windows::RegistryHandle owned(made);
        RequireDone(RegSetValueExW(made, ToWide(name).c_str(), 0, REG_DWORD,
                                   reinterpret_cast<const BYTE*>(&value), sizeof value),
                    key);
    }

    void DeleteValue(const RegistryKey& key, const std::string& name) override {
        const auto opened = OpenKey(key, KEY_SET_VALUE);
        RequireDone(opened == nullptr ? ERROR_FILE_NOT_FOUND
                                      : RegDeleteValueW(opened.get(), ToWide(name).c_str()),
                    key);
    }

    void Register(const std::string& file, int wordSize, Scope scope) override {
        const DWORD code =
            ExitCodeOf(L'"' + SystemFolder(wordSize) + L"\\regsvr32.exe\" /s " +
                       (scope == Scope::User ? L"/n /i:user " : L"") + L'"' + ToWide(file) + L'"');
        if (code != 0) {
            throw Error(ErrorNumber::InvalidCall,
                        file + " can't be registered: regsvr32 ends with " + std::to_string(code) +
                            (scope == Scope::Machine ? ". Try again as administrator." : "."));
        }
    }
};

}  // namespace

std::unique_ptr<InstalledSystem> ThisSystem() {
    return std::make_unique<WindowsSystem>();
}

}  // namespace krv::doctor
