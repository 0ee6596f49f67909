#include "windows/suite/RegisteredComponents.h"

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>
#include <winver.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

// What a component's key says under this name; empty where it says nothing. Variables of the
// environment come replaced.
std::wstring ServerEntry(const CLSID& id, const wchar_t* name) {
    // The system takes no text that is longer than an identity's and a NUL.
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    const std::wstring key = L"CLSID\\" + std::wstring(text.data()) + L"\\" + name;
    std::vector<wchar_t> entry(LongestPath);
    DWORD size = LongestPath * sizeof(wchar_t);
    return RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr,
                        entry.data(), &size) == ERROR_SUCCESS
               ? std::wstring(entry.data())
               : std::wstring();
}

// A bare name is looked for where the system looks for libraries.
std::wstring FullPath(std::wstring file) {
    std::erase(file, L'"');
    std::vector<wchar_t> full(LongestPath);
    const DWORD length =
        SearchPathW(nullptr, file.c_str(), L".exe", LongestPath, full.data(), nullptr);
    return length == 0 || length >= LongestPath ? file : std::wstring(full.data(), length);
}

bool IsFile(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// The program of a command line. Without quotation marks it ends, as the system has it, at the
// first blank before which there is a file.
std::wstring ProgramIn(const std::wstring& command) {
    if (command.starts_with(L'"')) {
        return FullPath(command.substr(0, command.find(L'"', 1)));
    }
    for (auto end = command.find(L' '); end != std::wstring::npos;
         end = command.find(L' ', end + 1)) {
        if (const std::wstring program = FullPath(command.substr(0, end)); IsFile(program)) {
            return program;
        }
    }
    return FullPath(command);
}

// The file of the server that runs in the process, else of the one that has its own; empty when
// none is registered.
std::wstring ServerPath(const CLSID& id) {
    if (const std::wstring file = ServerEntry(id, L"InprocServer32"); !file.empty()) {
        return FullPath(file);
    }
    const std::wstring command = ServerEntry(id, L"LocalServer32");
    return command.empty() ? command : ProgramIn(command);
}

std::string VersionOf(const std::wstring& path) {
    DWORD none = 0;
    std::vector<std::byte> resource(GetFileVersionInfoSizeW(path.c_str(), &none));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    if (resource.empty() ||
        GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(resource.size()),
                            resource.data()) == FALSE ||
        VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void**>(&fixed), &length) ==
            FALSE) {
        return {};
    }
    return std::to_string(HIWORD(fixed->dwFileVersionMS)) + '.' +
           std::to_string(LOWORD(fixed->dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(fixed->dwFileVersionLS)) + '.' +
           std::to_string(LOWORD(fixed->dwFileVersionLS));
}

// When the linker wrote the file; nothing for a file that doesn't say.
std::uint32_t LinkTime(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    IMAGE_DOS_HEADER start{};
    IMAGE_FILE_HEADER header{};
    DWORD signature = 0;
    file.read(reinterpret_cast<char*>(&start), sizeof start);
    file.seekg(start.e_lfanew);
    file.read(reinterpret_cast<char*>(&signature), sizeof signature);
    file.read(reinterpret_cast<char*>(&header), sizeof header);
    return file && start.e_magic == IMAGE_DOS_SIGNATURE && signature == IMAGE_NT_SIGNATURE
               ? header.TimeDateStamp
               : 0;
}

FILETIME FileTimeOf(std::uint32_t secondsSince1970) {
    constexpr std::uint64_t TicksPerSecond = 10000000;
    constexpr std::uint64_t TicksUntil1970 = 116444736000000000;
    const std::uint64_t ticks = secondsSince1970 * TicksPerSecond + TicksUntil1970;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

// As the user writes dates. A linker may leave its time out: then it is when the file was written.
std::string BuildDateOf(const std::wstring& path) {
    FILETIME built{};
    if (const std::uint32_t linked = LinkTime(path); linked != 0) {
        built = FileTimeOf(linked);
    } else {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == FALSE) {
            return {};
        }
        built = data.ftLastWriteTime;
    }
    SYSTEMTIME universal{};
    SYSTEMTIME local{};
    std::array<wchar_t, 80> text{};
    if (FileTimeToSystemTime(&built, &universal) == FALSE ||
        SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local) == FALSE ||
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &local, nullptr, text.data(),
                       static_cast<int>(text.size())) == 0) {
        return {};
    }
    return ToUtf8(text.data());
}

ports::ComponentVersion Describe(const std::string& progId, const std::wstring& path) {
    ports::ComponentVersion component{progId};
    component.path = ToUtf8(path);
    component.isInstalled = !path.empty() && IsFile(path);
    if (component.isInstalled) {
        component.version = VersionOf(path);
        component.buildDate = BuildDateOf(path);
    }
    return component;
}

}  // namespace

RegisteredComponents::RegisteredComponents(std::string ownProgId)
    : m_ownProgId(std::move(ownProgId)) {}

ports::ComponentVersion RegisteredComponents::Own() {
    return Describe(m_ownProgId, ThisModulePath());
}

ports::ComponentVersion RegisteredComponents::Find(const std::string& progId) {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(ToWide(progId).c_str(), &id))) {
        return {progId};
    }
    return Describe(progId, ServerPath(id));
}

}  // namespace krv::windows
