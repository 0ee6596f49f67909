// Registration of the module's classes, type library and interfaces: for all users of the machine,
// or for the current user, which takes no administrator.
//
// Keys below Software\Classes, "{...}" being an id:
//     PROGID, PROGID\CLSID
//     CLSID\{class}, \InprocServer32, \ProgID, \TypeLib, \Version, \Programmable
//     CLSID\{control}\Control, \MiscStatus, \MiscStatus\1
//     TypeLib\{library}\1.0, \FLAGS, \HELPDIR, \0\win32 or \0\win64
//     Interface\{interface}, \ProxyStubClsid32, \TypeLib
// and below Software\Microsoft\Office what AddInKeys.h tells. Controls are not Insertable and carry
// no safety category.
#pragma once

namespace krv::windows {

enum class RegistrationScope { Machine, User };

// Throws Error, and leaves the registry as it was, when one of the ProgIDs or classes belongs to
// another module, naming that module and what to do. A registration for the machine removes one of
// the current user's whose file has gone.
void RegisterModule(RegistrationScope scope);
// Removes what this very file has registered, and nothing of another module's.
void UnregisterModule(RegistrationScope scope);

}  // namespace krv::windows
