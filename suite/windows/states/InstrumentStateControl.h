// InstrumentStateControl: the ActiveX control in which the user captures, restores, renames and
// deletes the states of a list.
#pragma once

#include <optional>

#include "suite/states/StatePanel.h"
#include "suite/windows/SuiteObject.h"
#include "suite/windows/states/StateWindow.h"
#include "windows/base/BusyCursor.h"
#include "windows/com/OleControl.h"

namespace krv::suite {

class InstrumentStateControl final : public windows::OleControl<ICvnInstrumentState>,
                                     private suite::StatePanelFace {
 public:
    explicit InstrumentStateControl(const windows::ComClass& description);

    HRESULT STDMETHODCALLTYPE get_StateInfo(IDispatch** info) override;
    HRESULT STDMETHODCALLTYPE put_StateInfo(IDispatch* info) override;
    HRESULT STDMETHODCALLTYPE putref_StateInfo(IDispatch* info) override;
    HRESULT STDMETHODCALLTYPE get_StatusText(BSTR* text) override;

 protected:
    ~InstrumentStateControl() override;

 private:
    HWND CreateControlWindow(HWND parent, const RECT& place) override;
    void SiteChanged(IOleClientSite*) override {}
    bool TakesKey(MSG& message) override;
    void DrawInactive(HDC context, const RECT& place) override;

    void PanelChanged() override { m_window.Update(); }
    void Report(const std::string& text) override;
    bool Confirm(const std::string& question) override;
    void SetBusy(bool busy) override;
    int ShowBox(const std::string& text, UINT style) const;

    const MemberGuard<ICvnInstrumentState> m_guard{ProgId::InstrumentState};
    Microsoft::WRL::ComPtr<IDispatch> m_info;
    suite::StatePanel m_panel{*this};
    StateWindow m_window{m_panel, *static_cast<ICvnInstrumentState*>(this)};
    // Something while the hourglass is shown.
    std::optional<windows::BusyCursor> m_busy;
};

}  // namespace krv::suite
