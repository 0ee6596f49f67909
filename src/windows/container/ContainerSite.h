// ContainerSite: what a control in a ControlContainer talks to: its client site with the ambient
// properties. Used by ControlContainer only.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleidl.h>
#include <wrl/client.h>

#include <functional>

#include "windows/container/PlainContainer.h"

namespace krv::windows {

class ContainerSite final : public PlainSite<PlainFrame, IAdviseSink> {
 public:
    ContainerSite(HWND window, IDispatch* document);

    // Called when the control has changed what it shows.
    std::function<void()> OnView = [] {};

    // From the control's activation to its deactivation.
    [[nodiscard]] bool IsActive() const { return m_isActive; }

    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                              DWORD flags) override;
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override;
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override {}
    // The ambient properties.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override;

 private:
    bool m_isActive = false;
    Microsoft::WRL::ComPtr<OleContainer> m_container;
};

// Hundredths of a millimetre to pixels of the window's monitor.
[[nodiscard]] int PixelsOf(LONG himetric, HWND window);

}  // namespace krv::windows
