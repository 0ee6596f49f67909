// ControlContainer: a small container for one ActiveX control, which it activates in place. It
// gives the control a site, a frame, a document and ambient properties, as an office application
// does.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <functional>

#include "common/MemoryPropertyBag.h"

namespace krv::windows {

class ContainerSite;

class ControlContainer {
 public:
    // Creates the control and activates it in the parent window's top left corner. `document` is
    // what the control finds as its container; `saved` is what an earlier one has saved there, or
    // null for a new control. Throws Error when any of it fails.
    ControlContainer(HWND parent, const CLSID& id, IDispatch* document,
                     PropertyBag* saved = nullptr);
    ControlContainer(const ControlContainer&) = delete;
    ControlContainer& operator=(const ControlContainer&) = delete;
    // Deactivates and releases the control.
    ~ControlContainer();

    // The control's own automation object. Never null.
    [[nodiscard]] IUnknown* Control() const { return m_object.Get(); }
    // What the control wants its document to keep; nothing of a control that keeps nothing. Throws
    // Error when the control can't be saved.
    [[nodiscard]] MemoryPropertyBag Save() const;
    // The control has changed since it was loaded or saved.
    [[nodiscard]] bool IsDirty() const;
    // Calls the listener, which must not throw, whenever the control has changed what it shows.
    void WatchView(std::function<void()> listener);
    // In pixels, as the control wants to be.
    [[nodiscard]] SIZE Size() const;
    void Move(const RECT& place);
    // Offers a key to the control while it has the focus; true when the control used it.
    [[nodiscard]] bool TakesMessage(MSG& message) const;

 private:
    void Initialize(PropertyBag* saved);
    void LoadOrInitialize(PropertyBag* saved);
    void Deactivate() noexcept;

    Microsoft::WRL::ComPtr<ContainerSite> m_site;
    Microsoft::WRL::ComPtr<IOleObject> m_object;
    HWND m_parent;
};

}  // namespace krv::windows
