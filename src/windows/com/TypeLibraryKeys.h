// TypeLibraryKeys: the registry's keys for the module's type library and the interfaces in it, by
// which calls between processes and apartments are carried.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

#include "windows/com/RegistryKey.h"

namespace krv::windows {

// E.g. "{00020424-0000-0000-C000-000000000046}".
[[nodiscard]] std::wstring GuidText(const GUID& id);

class TypeLibraryKeys {
 public:
    // Throws Error when the module has no type library.
    TypeLibraryKeys();

    [[nodiscard]] const std::wstring& Id() const { return m_id; }
    // E.g. "1.0".
    [[nodiscard]] const std::wstring& Version() const { return m_version; }

    void Register(const RegistryKey& classes) const;
    // The registered file; empty where there is none.
    [[nodiscard]] std::wstring FileIn(const RegistryKey& classes) const;
    // Removes the keys, whichever file's they are.
    void Remove(const RegistryKey& classes) const;
    // Leaves the keys of another file's type library alone.
    void Unregister(const RegistryKey& classes) const;

 private:
    struct Interface {
        std::wstring id;
        std::wstring name;
        const wchar_t* proxy;
    };

    [[nodiscard]] static std::vector<Interface> InterfacesOf(ITypeLib& library);

    std::wstring m_id;
    std::wstring m_version;
    std::wstring m_title;
    std::vector<Interface> m_interfaces;
};

}  // namespace krv::windows
