// ControlHost: a small container for one ActiveX control, which it activates in place. It gives the
// control a site, a frame, a document and ambient properties, as an office application does.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

namespace krv::bench {

class HostSite;

class ControlHost {
 public:
    // Creates the control and activates it in the parent window's top left corner. `document` is
    // what the control finds as its container. Throws Error when any of it fails.
    ControlHost(HWND parent, const CLSID& id, IDispatch* document);
    ControlHost(const ControlHost&) = delete;
    ControlHost& operator=(const ControlHost&) = delete;
    // Deactivates and releases the control.
    ~ControlHost();

    // The control's own automation object. Never null.
    [[nodiscard]] IUnknown* Control() const { return m_object.Get(); }
    // In pixels, as the control wants to be.
    [[nodiscard]] SIZE Size() const;
    void Move(const RECT& place);
    // Offers a key to the control while it has the focus; true when the control used it.
    [[nodiscard]] bool TakesMessage(MSG& message) const;

 private:
    void Initialize();
    void Deactivate() noexcept;

    Microsoft::WRL::ComPtr<HostSite> m_site;
    Microsoft::WRL::ComPtr<IOleObject> m_object;
    HWND m_parent;
};

}  // namespace krv::bench
