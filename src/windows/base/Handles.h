// Owners of the system's handles: one policy, and an alias for each kind of handle. An owner of the
// null handle owns nothing.
#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace krv::windows {

template <auto Close>
struct HandleCloser {
    template <class Object>
    void operator()(Object* handle) const noexcept {
        Close(handle);
    }
};

// Gives the handle back with Close, a function of the system.
template <class Handle, auto Close>
using OwnedHandle = std::unique_ptr<std::remove_pointer_t<Handle>, HandleCloser<Close>>;

using Bitmap = OwnedHandle<HBITMAP, DeleteObject>;
using Brush = OwnedHandle<HBRUSH, DeleteObject>;
using Font = OwnedHandle<HFONT, DeleteObject>;
using Pen = OwnedHandle<HPEN, DeleteObject>;
// A device context that was made, not one that a window lends; see DeviceContext.h for those.
using MemoryContext = OwnedHandle<HDC, DeleteDC>;
using RegistryHandle = OwnedHandle<HKEY, RegCloseKey>;

}  // namespace krv::windows
