// The registry's keys by which Excel and Word find the module's add-ins and load them:
//     Software\Microsoft\Office\APPLICATION\Addins\PROGID
// with FriendlyName, Description and LoadBehavior.
#pragma once

#include <windows.h>

#include <functional>

namespace krv::windows {

// Below the root. What the user or the application has set of an add-in's loading is set back.
// Throws Error.
void RegisterAddIns(HKEY root);
// Removes the keys of those add-ins whose ProgID is free, and what is empty then. Throws Error.
void UnregisterAddIns(HKEY root, const std::function<bool(const char* progId)>& isFree);

}  // namespace krv::windows
