// The list of named states as a component, and the way from it to the portable list.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <wrl/client.h>

#include <memory>

#include "suite/states/StateBook.h"

namespace krv::suite {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Only this module's own lists have this interface.
struct IStateBookAccess : IUnknown {
    virtual std::shared_ptr<suite::StateBook> Book() noexcept = 0;
};

#pragma GCC diagnostic pop

// An empty list with one reference. Throws std::bad_alloc.
[[nodiscard]] IUnknown* NewStateInfo();

// Null for a null object and for a list of another component.
[[nodiscard]] std::shared_ptr<suite::StateBook> BookOf(IUnknown* info);

}  // namespace krv::suite

__CRT_UUID_DECL(krv::suite::IStateBookAccess, 0x52e1a9c4, 0x3f27, 0x4d0b, 0x8a, 0x55, 0x6b, 0x8f,
                0x0f, 0x3c, 0x11, 0xf1)
