#include "bench/shared/windows/AddInRegistry.h"

#include <array>
#include <cwchar>
#include <map>

#include "windows/base/Handles.h"

namespace krv::bench {
namespace {

// Names don't differ by case.
struct ByName {
    bool operator()(const std::wstring& one, const std::wstring& other) const {
        return _wcsicmp(one.c_str(), other.c_str()) < 0;
    }
};
using AddIns = std::map<std::wstring, RegisteredAddIn, ByName>;

std::wstring PathOf(const std::wstring& application) {
    return L"Software\\Microsoft\\Office\\" + application + L"\\Addins";
}

std::wstring RegistryText(HKEY key, const std::wstring& subkey, const wchar_t* name) {
    std::array<wchar_t, 512> text{};
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    RegGetValueW(key, subkey.c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return text.data();
}

DWORD RegistryNumber(HKEY key, const std::wstring& subkey, const wchar_t* name) {
    DWORD number = 0;
    DWORD size = sizeof number;
    RegGetValueW(key, subkey.c_str(), name, RRF_RT_REG_DWORD, nullptr, &number, &size);
    return number;
}

void Collect(AddIns& found, HKEY root, const std::wstring& application) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, PathOf(application).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return;
    }
    const windows::RegistryHandle key(opened);
    std::array<wchar_t, 256> name{};
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(opened, index, name.data(), &length, nullptr, nullptr, nullptr,
                          nullptr) != ERROR_SUCCESS) {
            break;
        }
        RegisteredAddIn& addIn = found[name.data()];
        addIn.progId = name.data();
        addIn.behavior = RegistryNumber(opened, addIn.progId, L"LoadBehavior");
        if (const auto text = RegistryText(opened, addIn.progId, L"FriendlyName"); !text.empty()) {
            addIn.description = text;
        }
    }
}

}  // namespace

std::vector<RegisteredAddIn> FindAddIns(const std::wstring& application) {
    AddIns found;
    Collect(found, HKEY_LOCAL_MACHINE, application);
    Collect(found, HKEY_CURRENT_USER, application);
    std::vector<RegisteredAddIn> addIns;
    for (auto& [name, addIn] : found) {
        addIns.push_back(std::move(addIn));
    }
    return addIns;
}

void WriteLoadBehavior(const std::wstring& application, const std::wstring& progId,
                       DWORD behavior) {
    RegSetKeyValueW(HKEY_CURRENT_USER, (PathOf(application) + L"\\" + progId).c_str(),
                    L"LoadBehavior", REG_DWORD, &behavior, sizeof behavior);
}

}  // namespace krv::bench
