// The functions that every in-process server exports.
#include <windows.h>
// After windows.h, which it needs.
#include <olectl.h>

#include <cwchar>

#include "windows/automation/ComGuard.h"
#include "windows/com/ClassFactory.h"
#include "windows/com/Registration.h"

using namespace krv::windows;

namespace {

HRESULT Install(bool install, RegistrationScope scope) {
    return Guarded(IID_NULL, ThisComModule().name,
                   [&] { install ? RegisterModule(scope) : UnregisterModule(scope); });
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, LPVOID* object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    for (const ComClass& known : ThisComModule().classes) {
        if (known.id == classId) {
            Microsoft::WRL::ComPtr<ClassFactory> factory;
            const HRESULT result = Guarded(IID_IClassFactory, ThisComModule().name,
                                           [&] { factory = MakeCom<ClassFactory>(known); });
            return SUCCEEDED(result) ? factory->QueryInterface(interfaceId, object) : result;
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return ModuleCount::Value() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return Install(true, RegistrationScope::Machine);
}

STDAPI DllUnregisterServer() {
    return Install(false, RegistrationScope::Machine);
}

// `regsvr32 /n /i:user FILE` registers for the current user, which takes no administrator.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    if (commandLine == nullptr || *commandLine == L'\0') {
        return Install(install != FALSE, RegistrationScope::Machine);
    }
    if (_wcsicmp(commandLine, L"user") == 0) {
        return Install(install != FALSE, RegistrationScope::User);
    }
    return E_INVALIDARG;
}

// How many objects and locks keep the module loaded.
STDAPI_(LONG) ModuleObjectCount() {
    return ModuleCount::Value();
}
