// Ribbon: the add-in's part of the host's ribbon: what its buttons show, and that the host asks
// anew when that has changed. The host's thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <cstddef>
#include <string>

#include "windows/addin/GeneratorBar.h"
#include "windows/extensibility/OfficeInterfaces.h"

namespace krv::windows {

class Ribbon {
 public:
    // A host loads the ribbon anew at times; the newest counts.
    void Load(IDispatch* ribbon);
    [[nodiscard]] bool IsLoaded() const { return m_ribbon != nullptr; }
    // The host asks for everything again.
    void Invalidate() const;

 private:
    Microsoft::WRL::ComPtr<IRibbonUI> m_ribbon;
};

// The command that a control of the ribbon stands for. Throws Error 5 for any other.
[[nodiscard]] std::size_t CommandOf(IDispatch* control);
// What a button's tip says: what it does, or why it can't be used.
[[nodiscard]] std::string SupertipOf(const ButtonStates& states, std::size_t command);
// The command's picture for large buttons in the window; the caller owns it. Throws Error.
[[nodiscard]] IDispatch* NewCommandPicture(std::size_t command, HWND window);

}  // namespace krv::windows
