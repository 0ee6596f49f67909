// What Excel and Word ask of a COM add-in, and what it may ask of them by vtable. Names, identities
// and slots are the hosts' own.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

namespace krv::windows {

enum class ConnectMode : int { AfterStartup = 0, Startup = 1, External = 2, CommandLine = 3 };
enum class DisconnectMode : int { HostShutdown = 0, UserClosed = 1 };

// Interfaces have no destructors: objects are destroyed by their last Release.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

struct IDTExtensibility2 : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, ConnectMode mode,
                                                   IDispatch* addIn, SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnDisconnection(DisconnectMode mode, SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
    virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

struct IRibbonExtensibility : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* xml) = 0;
};

struct IRibbonControl : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_Id(BSTR* value) = 0;
    // The window that the control lies in.
    virtual HRESULT STDMETHODCALLTYPE get_Context(IDispatch** value) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Tag(BSTR* value) = 0;
};

struct IRibbonUI : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE Invalidate() = 0;
    virtual HRESULT STDMETHODCALLTYPE InvalidateControl(BSTR id) = 0;
};

#pragma GCC diagnostic pop

}  // namespace krv::windows

__CRT_UUID_DECL(krv::windows::IDTExtensibility2, 0xB65AD801, 0xABAF, 0x11D0, 0xBB, 0x8B, 0x00, 0xA0,
                0xC9, 0x0F, 0x27, 0x44)
__CRT_UUID_DECL(krv::windows::IRibbonExtensibility, 0x000C0396, 0x0000, 0x0000, 0xC0, 0x00, 0x00,
                0x00, 0x00, 0x00, 0x00, 0x46)
__CRT_UUID_DECL(krv::windows::IRibbonControl, 0x000C0395, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00,
                0x00, 0x00, 0x00, 0x46)
__CRT_UUID_DECL(krv::windows::IRibbonUI, 0x000C03A7, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00,
                0x00, 0x00, 0x46)
