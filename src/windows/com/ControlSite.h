// ControlSite: a control's side of its conversation with the container: site, extent, in-place
// activation and advise connections. It knows OLE controls in general and no particular one.
//
// Every call to the container may come back: with a deactivation, a closing, another site. What is
// used behind such a call is held, or looked at anew.
//
// Owned by its control, which keeps itself alive while it calls this; the apartment's thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

namespace krv::windows {

// What the site asks of the control that owns it.
class ControlWindowFactory {
 public:
    virtual ~ControlWindowFactory() = default;
    // Creates the control's child window at this place of the container's window; null on failure.
    virtual HWND CreateControlWindow(HWND parent, const RECT& place) = 0;
};

class ControlSite {
 public:
    // The extent is in HIMETRIC units (hundredths of a millimetre).
    ControlSite(ControlWindowFactory& factory, SIZEL extent)
        : m_factory(factory), m_extent(extent) {}
    ControlSite(const ControlSite&) = delete;
    ControlSite& operator=(const ControlSite&) = delete;
    ~ControlSite();

    void SetClientSite(IOleClientSite* site);
    [[nodiscard]] IOleClientSite* ClientSite() const { return m_clientSite.Get(); }

    void SetExtent(SIZEL extent) { m_extent = extent; }
    [[nodiscard]] SIZEL Extent() const { return m_extent; }

    // In-place activation with a window; with the user interface when asked. Fails when the
    // container takes it back meanwhile.
    HRESULT Activate(IOleInPlaceActiveObject* active, bool withInterface);
    HRESULT DeactivateInterface();
    HRESULT Deactivate();
    [[nodiscard]] bool IsActive() const { return m_inPlaceSite != nullptr; }
    [[nodiscard]] HWND Window() const { return m_window; }
    void SetRectangles(const RECT& position, const RECT& clip);

    // Lets the container translate a key that the control doesn't use.
    [[nodiscard]] HRESULT OfferKey(MSG& message) const;
    void TellViewChanged() const;
    void TellClosed() const;

    [[nodiscard]] Microsoft::WRL::ComPtr<IOleAdviseHolder> AdviseHolder();
    void SetViewAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink);
    void GetViewAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const;

 private:
    HRESULT OpenWindow();
    HRESULT PlaceWindow(IOleInPlaceSite& site, unsigned activation);
    HRESULT ShowInterface(IOleInPlaceActiveObject* active);
    // Neither ended nor followed by another activation.
    [[nodiscard]] bool IsStill(unsigned activation) const {
        return IsActive() && m_activation == activation;
    }

    ControlWindowFactory& m_factory;
    SIZEL m_extent;
    HWND m_window = nullptr;
    bool m_interfaceActive = false;
    bool m_isEnding = false;
    // How many times it was activated.
    unsigned m_activation = 0;
    Microsoft::WRL::ComPtr<IOleClientSite> m_clientSite;
    Microsoft::WRL::ComPtr<IOleInPlaceSite> m_inPlaceSite;
    Microsoft::WRL::ComPtr<IOleInPlaceFrame> m_frame;
    Microsoft::WRL::ComPtr<IOleInPlaceUIWindow> m_documentWindow;
    Microsoft::WRL::ComPtr<IOleAdviseHolder> m_adviseHolder;
    Microsoft::WRL::ComPtr<IAdviseSink> m_viewSink;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;
};

// Pixels of the screen to HIMETRIC.
[[nodiscard]] SIZEL ToHimetric(SIZE pixels, int dotsPerInch);

}  // namespace krv::windows
