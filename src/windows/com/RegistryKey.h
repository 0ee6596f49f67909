// RegistryKey: a key below which a registration writes, reads and deletes.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

#include "windows/base/Handles.h"

namespace krv::windows {

class RegistryKey {
 public:
    // Opens the key, or makes it. Throws Error.
    RegistryKey(HKEY root, const wchar_t* path);
    // Takes an open key over.
    explicit RegistryKey(HKEY key) : m_key(key) {}

    // A null name is the subkey's default value. Makes the subkey; throws Error.
    void Write(const std::wstring& subkey, const wchar_t* name, const std::wstring& value) const;
    void Write(const std::wstring& subkey, const wchar_t* name, DWORD value) const;
    // The subkey's default value; empty where there is none. `view` is 0, KEY_WOW64_32KEY or
    // KEY_WOW64_64KEY.
    [[nodiscard]] std::wstring Read(const std::wstring& subkey, REGSAM view = 0) const;
    // Deletes the subkey with all below it; throws Error when it is there and doesn't go.
    void DeleteTree(const std::wstring& subkey) const;
    // Deletes the subkey unless it has subkeys or values.
    void DeleteWhenEmpty(const std::wstring& subkey) const;
    // The subkey is there with subkeys or values.
    [[nodiscard]] bool HasContent(const std::wstring& subkey) const;

 private:
    void Write(const std::wstring& subkey, const wchar_t* name, DWORD kind, const void* value,
               std::size_t size) const;

    RegistryHandle m_key;
};

}  // namespace krv::windows
