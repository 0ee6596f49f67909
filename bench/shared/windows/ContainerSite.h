// ContainerSite: what a control in a ControlContainer talks to: its client site with the ambient
// properties. Used by ControlContainer only.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleidl.h>
#include <wrl/client.h>

#include "bench/shared/windows/PlainContainer.h"

namespace krv::bench {

class ContainerSite final : public PlainSite<PlainFrame> {
 public:
    ContainerSite(HWND window, IDispatch* document);

    // From the control's activation to its deactivation.
    [[nodiscard]] bool IsActive() const { return m_isActive; }

    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                              DWORD flags) override;
    // The ambient properties.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override;

 private:
    bool m_isActive = false;
    Microsoft::WRL::ComPtr<OleContainer> m_container;
};

// Hundredths of a millimetre to pixels of the window's monitor.
[[nodiscard]] int PixelsOf(LONG himetric, HWND window);

}  // namespace krv::bench
