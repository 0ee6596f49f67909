#include "windows/base/DotsPerInch.h"

#include "windows/base/DeviceContext.h"

namespace krv::windows {
namespace {

using GetDpiForWindowFunction = UINT(WINAPI*)(HWND);

// Absent before Windows 10 1607.
GetDpiForWindowFunction FindGetDpiForWindow() {
    const HMODULE user32 = GetModuleHandleW(L"user32.dll");
    const FARPROC found = GetProcAddress(user32, "GetDpiForWindow");
    return reinterpret_cast<GetDpiForWindowFunction>(reinterpret_cast<void*>(found));
}

UINT SystemDotsPerInch() {
    return static_cast<UINT>(GetDeviceCaps(WindowContext(nullptr).Get(), LOGPIXELSX));
}

}  // namespace

UINT DotsPerInch(HWND window) {
    static const GetDpiForWindowFunction getDpiForWindow = FindGetDpiForWindow();
    const UINT dots = window != nullptr && getDpiForWindow != nullptr ? getDpiForWindow(window) : 0;
    return dots != 0 ? dots : SystemDotsPerInch();
}

}  // namespace krv::windows
