// ComModule: what an in-process server library offers: its classes, by which it is registered and
// by which its objects are created. Each library defines ThisComModule(); the exported functions in
// ComExports.cpp do the rest. The type library is the module's resource 1.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>

#include <span>

namespace krv::windows {

struct ComClass {
    CLSID id;
    const char* progId;
    // The name of the class in lists for users.
    const wchar_t* title;
    // A new object with one reference, which the caller owns. Throws Error or std::bad_alloc.
    IUnknown* (*create)();
    // An ActiveX control has a status of OLEMISC flags; other classes have none.
    DWORD miscStatus = 0;
    [[nodiscard]] bool IsControl() const { return miscStatus != 0; }
};

// One of the module's classes as an add-in of an Office application, which loads it at its start.
struct OfficeAddIn {
    // "Excel"
    const wchar_t* application;
    // Of at most 39 characters.
    const char* progId;
    const wchar_t* name;
    const wchar_t* description;
};

struct ComModule {
    // Names the module in error information.
    const char* name;
    std::span<const ComClass> classes;
    std::span<const OfficeAddIn> addIns = {};
};

[[nodiscard]] const ComModule& ThisComModule();

}  // namespace krv::windows
