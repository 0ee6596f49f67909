// The registry's keys for COM add-ins, where an Office application looks for them:
//     Software\Microsoft\Office\APPLICATION\Addins\PROGID
// for the current user and for all users; what the user has counts.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace krv::bench {

// How an add-in is loaded: the flags of the value LoadBehavior.
namespace LoadBehavior {
inline constexpr DWORD Connected = 1;
inline constexpr DWORD AtStartup = 2;
inline constexpr DWORD OnDemand = 8;
// At the next start, and on demand from then on.
inline constexpr DWORD OnceAtStartup = 16;
}  // namespace LoadBehavior

struct RegisteredAddIn {
    std::wstring progId;
    std::wstring description;
    DWORD behavior = 0;

    [[nodiscard]] bool IsForStartup() const {
        return (behavior & LoadBehavior::OnceAtStartup) != 0 ||
               behavior == (LoadBehavior::AtStartup | LoadBehavior::Connected);
    }
};

// In the order of their ProgIDs.
[[nodiscard]] std::vector<RegisteredAddIn> FindAddIns(const std::wstring& application);
// Into the current user's key, which is made where it is missing.
void WriteLoadBehavior(const std::wstring& application, const std::wstring& progId, DWORD behavior);

}  // namespace krv::bench
