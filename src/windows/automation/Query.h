// Asking an object for one of its interfaces.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <unknwn.h>
#include <wrl/client.h>

namespace krv::windows {

// Null for a null object, and when the object doesn't offer the interface.
template <class Interface>
[[nodiscard]] Microsoft::WRL::ComPtr<Interface> Query(IUnknown* object) {
    Microsoft::WRL::ComPtr<Interface> found;
    if (object != nullptr) {
        object->QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(found.GetAddressOf()));
    }
    return found;
}

}  // namespace krv::windows
