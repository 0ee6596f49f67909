// For tests that need a function of the system to behave as it seldom does.
#pragma once

#include <windows.h>

namespace krv::tests {

// Of a library that is loaded.
[[nodiscard]] inline void* SystemFunction(const wchar_t* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name));
}

// Lets the module call the replacement where it imports the function; false if it doesn't import
// it.
inline bool ReplaceImport(HMODULE module, const void* function, void* replacement) {
    auto* const base = reinterpret_cast<BYTE*>(module);
    const auto& headers = *reinterpret_cast<IMAGE_NT_HEADERS*>(
        base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         from->Name != 0; ++from) {
        for (auto* slot = reinterpret_cast<void**>(base + from->FirstThunk); *slot != nullptr;
             ++slot) {
            DWORD protection = 0;
            if (*slot == function &&
                VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection) != FALSE) {
                *slot = replacement;
                return true;
            }
        }
    }
    return false;
}

}  // namespace krv::tests
