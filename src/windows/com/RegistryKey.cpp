#include "windows/com/RegistryKey.h"

#include "windows/automation/ComGuard.h"

namespace krv::windows {
namespace {

void ThrowIfRefused(LSTATUS status) {
    ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

// Null when it isn't there.
RegistryHandle OpenToRead(HKEY root, const wchar_t* path, REGSAM view = 0) {
    HKEY key = nullptr;
    return RegistryHandle(
        RegOpenKeyExW(root, path, 0, KEY_READ | view, &key) == ERROR_SUCCESS ? key : nullptr);
}

}  // namespace

RegistryKey::RegistryKey(HKEY root, const wchar_t* path) {
    HKEY key = nullptr;
    ThrowIfRefused(RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                   KEY_READ | KEY_WRITE | DELETE, nullptr, &key, nullptr));
    m_key.reset(key);
}

void RegistryKey::Write(const std::wstring& subkey, const wchar_t* name,
                        const std::wstring& value) const {
    Write(subkey, name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void RegistryKey::Write(const std::wstring& subkey, const wchar_t* name, DWORD value) const {
    Write(subkey, name, REG_DWORD, &value, sizeof value);
}

void RegistryKey::Write(const std::wstring& subkey, const wchar_t* name, DWORD kind,
                        const void* value, std::size_t size) const {
    const RegistryKey key(m_key.get(), subkey.c_str());
    ThrowIfRefused(RegSetValueExW(key.m_key.get(), name, 0, kind, static_cast<const BYTE*>(value),
                                  static_cast<DWORD>(size)));
}

std::wstring RegistryKey::Read(const std::wstring& subkey, REGSAM view) const {
    const RegistryHandle key = OpenToRead(m_key.get(), subkey.c_str(), view);
    if (key == nullptr) {
        return {};
    }
    DWORD size = 0;
    std::wstring value;
    if (RegGetValueW(key.get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &size) ==
        ERROR_SUCCESS) {
        value.resize(size / sizeof(wchar_t));
        RegGetValueW(key.get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &size);
        value.resize(value.find_last_not_of(L'\0') + 1);
    }
    return value;
}

void RegistryKey::DeleteTree(const std::wstring& subkey) const {
    const LSTATUS status = RegDeleteTreeW(m_key.get(), subkey.c_str());
    ThrowIfRefused(status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status);
}

void RegistryKey::DeleteWhenEmpty(const std::wstring& subkey) const {
    if (!HasContent(subkey)) {
        DeleteTree(subkey);
    }
}

bool RegistryKey::HasContent(const std::wstring& subkey) const {
    const RegistryHandle key = OpenToRead(m_key.get(), subkey.c_str());
    DWORD children = 0;
    DWORD values = 0;
    RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &children, nullptr, nullptr, &values,
                     nullptr, nullptr, nullptr, nullptr);
    return key != nullptr && (children != 0 || values != 0);
}

}  // namespace krv::windows
