// ComAddIn: one COM add-in of an application of the bench: connected to it, and disconnected, by
// the calls and in the order in which an Office application makes them. The user-interface
// thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <string>
#include <utility>

#include "bench/shared/windows/AddInRegistry.h"
#include "windows/extensibility/OfficeInterfaces.h"

namespace krv::bench {

class ComAddIn {
 public:
    // The application's add-ins are those of "Excel" or "Word".
    ComAddIn(RegisteredAddIn registered, std::wstring application)
        : m_registered(std::move(registered)), m_application(std::move(application)) {}
    ComAddIn(const ComAddIn&) = delete;
    ComAddIn& operator=(const ComAddIn&) = delete;

    [[nodiscard]] const RegisteredAddIn& Registered() const { return m_registered; }
    [[nodiscard]] bool IsConnected() const { return m_addIn != nullptr; }
    // "{...}"; empty when the ProgID leads to no class.
    [[nodiscard]] std::wstring ClassText() const;

    // An add-in that fails isn't loaded at the next start. `instance` stands for the add-in in the
    // application's COMAddIns. Throws Error.
    void Connect(IDispatch* application, IDispatch* instance, windows::ConnectMode mode);
    void TellStartupComplete();
    void TellBeginShutdown();
    // What the user does counts for the next start, too.
    void Disconnect(windows::DisconnectMode mode);

    // What the add-in gives to macros.
    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }
    void SetObject(IDispatch* object) { m_object = object; }
    // Null unless it is connected.
    [[nodiscard]] IUnknown* Instance() const { return m_addIn.Get(); }

 private:
    void Create();
    void Remember(DWORD behavior);

    RegisteredAddIn m_registered;
    std::wstring m_application;
    Microsoft::WRL::ComPtr<windows::IDTExtensibility2> m_addIn;
    Microsoft::WRL::ComPtr<IDispatch> m_object;
};

}  // namespace krv::bench
