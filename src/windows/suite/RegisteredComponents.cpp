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

constexpr DWORD LongestPath = 32768;

// The file of an in-process server; empty when none is registered.
std::wstring ServerPath(const CLSID& id) {
    // The system takes no text that is longer than an identity's and a NUL.
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    const std::wstring key = L"CLSID\\" + std::wstring(text.data()) + L"\\InprocServer32";
    std::vector<wchar_t> path(LongestPath);
    DWORD size = LongestPath * sizeof(wchar_t);
    // Variables of the environment come replaced.
    if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path.data(),
                     &size) != ERROR_SUCCESS) {
        return {};
    }
    std::wstring file = path.data();
    std::erase(file, L'"');
    // A bare name is looked for where the system looks for libraries.
    std::vector<wchar_t> full(LongestPath);
    const DWORD length =
        SearchPathW(nullptr, file.c_str(), nullptr, LongestPath, full.data(), nullptr);
    return length == 0 || length >= LongestPath ? file : std::wstring(full.data(), length);
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
    component.isInstalled =
        !path.empty() && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
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
