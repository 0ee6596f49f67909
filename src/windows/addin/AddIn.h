// AddIn: the add-in as Excel and Word know it: what they call when they connect it, start up, shut
// down and disconnect it. A connection that fails says why in the log. Apartment-threaded.
#pragma once

#include <memory>

#include "windows/addin/AddInSession.h"
#include "windows/automation/DispatchObject.h"
#include "windows/extensibility/OfficeInterfaces.h"
// After the windows headers, which it needs.
#include <KRVAddIn.h>

namespace krv::windows {

class AddIn final : public DispatchObject<IKRVAddIn, IDTExtensibility2, IRibbonExtensibility> {
 public:
    HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, ConnectMode mode,
                                           IDispatch* addIn, SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnDisconnection(DisconnectMode mode, SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
    HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

    HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* xml) override;

    HRESULT STDMETHODCALLTYPE get_Control(IDispatch** control) override;
    HRESULT STDMETHODCALLTYPE OnRibbonLoad(IDispatch* ribbon) override;
    HRESULT STDMETHODCALLTYPE OnCommand(IDispatch* control) override;
    HRESULT STDMETHODCALLTYPE GetLabel(IDispatch* control, BSTR* label) override;
    HRESULT STDMETHODCALLTYPE GetEnabled(IDispatch* control, VARIANT_BOOL* isEnabled) override;
    HRESULT STDMETHODCALLTYPE GetVisible(IDispatch* control, VARIANT_BOOL* isVisible) override;
    HRESULT STDMETHODCALLTYPE GetSupertip(IDispatch* control, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE GetImage(IDispatch* control, IDispatch** picture) override;

 private:
    ~AddIn() override;

    // Work for the ribbon with a place for its result. Throws nothing.
    template <class Result, class Work>
    HRESULT Answer(Result* result, Work&& work) noexcept;

    // Between connection and disconnection.
    std::shared_ptr<AddInSession> m_session;
};

}  // namespace krv::windows
