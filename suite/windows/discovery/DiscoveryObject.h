// DiscoveryObject: the ActiveX control in which the user finds an instrument and connects to it.
//
// It works on connection settings: the ones that it was given, or its own. Connecting puts a
// session into the settings, disconnecting ends the session and takes it out; each raises
// ConnectionChange.
#pragma once

#include "suite/windows/SuiteObject.h"
#include "suite/windows/discovery/DiscoveryWindow.h"
#include "windows/automation/ConnectionPoint.h"
#include "windows/automation/LateBound.h"
#include "windows/com/OleControl.h"

namespace krv::suite {

class DiscoveryObject final
    : public windows::OleControl<ICvnDiscoveryCtl, IConnectionPointContainer>,
      private DiscoveryActions {
 public:
    explicit DiscoveryObject(const windows::ComClass& description);

    HRESULT STDMETHODCALLTYPE get_IOSettings(IDispatch** settings) override;
    HRESULT STDMETHODCALLTYPE put_IOSettings(IDispatch* settings) override;
    HRESULT STDMETHODCALLTYPE putref_IOSettings(IDispatch* settings) override;
    HRESULT STDMETHODCALLTYPE get_ConnectButtonsVisible(VARIANT_BOOL* visible) override;
    HRESULT STDMETHODCALLTYPE put_ConnectButtonsVisible(VARIANT_BOOL visible) override;
    HRESULT STDMETHODCALLTYPE get_SupportInstrumentsLabelVisible(VARIANT_BOOL* visible) override;
    HRESULT STDMETHODCALLTYPE put_SupportInstrumentsLabelVisible(VARIANT_BOOL visible) override;
    HRESULT STDMETHODCALLTYPE get_Address(BSTR* address) override;
    HRESULT STDMETHODCALLTYPE put_Address(BSTR address) override;
    HRESULT STDMETHODCALLTYPE Connect() override;
    HRESULT STDMETHODCALLTYPE Disconnect() override;
    HRESULT STDMETHODCALLTYPE get_StatusText(BSTR* text) override;

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 protected:
    ~DiscoveryObject() override;

 private:
    HWND CreateControlWindow(HWND parent, const RECT& place) override;
    void SiteChanged(IOleClientSite*) override {}
    bool TakesKey(MSG& message) override { return m_window.TakesKey(message); }
    void DrawInactive(HDC context, const RECT& place) override;
    void EventsThawed() override;

    void ConnectClicked() override;
    void DisconnectClicked() override;
    void AddressEntered(const std::string& address) override;

    void ConnectTo(const std::string& address);
    void EndSession();
    // Makes the settings where none were given.
    [[nodiscard]] const windows::LateBound& Settings();
    void TakeSettings(IDispatch* settings);
    void ReadSupportedModels();
    // Shows which session the settings hold.
    void ShowConnection();
    void ShowStatus(const std::string& status);
    void RaiseConnectionChange();

    const MemberGuard<ICvnDiscoveryCtl> m_guard{ProgId::Discovery};
    windows::LateBound m_settings;
    DiscoveryView m_view;
    DiscoveryWindow m_window{*this, m_view};
    windows::EventSource m_events;
    // The connection has changed while the container wanted no events.
    bool m_changeHeld = false;
};

}  // namespace krv::suite
