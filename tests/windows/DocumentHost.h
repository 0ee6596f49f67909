// DocumentHost: a document that the toolbar control lies in, in this process: krvbook's model and
// automation objects without its window, and a container that loads and saves the control by
// whichever interface a test chooses.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "bench/book/windows/ApplicationObject.h"
#include "bench/shared/windows/HostSite.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/TestedLibrary.h"
#include "windows/automation/LateBound.h"

namespace krv::tests {

// The program around the document.
class OfficeProgram final : public bench::ProgramWindow {
 public:
    OfficeProgram()
        : m_window(CreateWindowExW(0, L"STATIC", L"Office", WS_OVERLAPPEDWINDOW, 0, 0, 600, 200,
                                   nullptr, nullptr, nullptr, nullptr)),
          m_automation(std::make_shared<bench::BookAutomation>(m_model, *this)),
          m_object(windows::MakeCom<bench::ApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(Application());
        m_model.Add();
    }
    ~OfficeProgram() override {
        m_object->End();
        m_automation->End();
        DestroyWindow(m_window);
    }

    [[nodiscard]] HWND Handle() const override { return m_window; }
    [[nodiscard]] IDispatch* Application() const { return m_object.Get(); }
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> Document() const {
        return m_automation->ObjectOf(m_model.ActiveBook());
    }
    // "enabled" or "disabled" and the tool tip of a button; "hidden" when it is.
    [[nodiscard]] std::string Button(const char* caption) {
        const auto& button = m_model.GeneratorBar().At(m_model.GeneratorBar().PositionOf(caption));
        return button.isVisible ? (button.isEnabled ? "enabled " : "disabled ") + button.tooltipText
                                : "hidden";
    }

 private:
    [[nodiscard]] bool IsShown() const override { return true; }
    void Show(bool) override {}
    [[nodiscard]] bool IsEditing() const override { return false; }
    void Quit() override {}

    HWND m_window;
    bench::BookApplication m_model;
    std::shared_ptr<bench::BookAutomation> m_automation;
    Microsoft::WRL::ComPtr<bench::ApplicationObject> m_object;
};

// A control in the program's document, from loading to closing.
class DocumentHost {
 public:
    using Loading = std::function<HRESULT(IUnknown* control)>;

    // A new control without a loading. The host hands the application over, as add-ins do.
    explicit DocumentHost(const OfficeProgram& program, const Loading& load = {})
        : m_site(windows::MakeCom<bench::HostSite>(program.Handle(), program.Document().Get())),
          m_control(TestedLibrary::Control().Create(__uuidof(::KRVControl))) {
        Query<IOleObject>()->SetClientSite(m_site.Get());
        m_loaded = load ? load(m_control.Object()) : Query<IPersistStreamInit>()->InitNew();
        m_control.PutObject(L"ConnectedApplication", program.Application());
        m_control.Call(L"UpdateConnectedStatus");
    }
    DocumentHost(const DocumentHost&) = delete;
    DocumentHost& operator=(const DocumentHost&) = delete;
    ~DocumentHost() {
        Query<IOleObject>()->Close(OLECLOSE_NOSAVE);
        Query<IOleObject>()->SetClientSite(nullptr);
    }

    [[nodiscard]] HRESULT Loaded() const { return m_loaded; }
    [[nodiscard]] const windows::LateBound& Control() const { return m_control; }
    template <class Interface>
    [[nodiscard]] Microsoft::WRL::ComPtr<Interface> Query() const {
        Microsoft::WRL::ComPtr<Interface> found;
        m_control.Object()->QueryInterface(__uuidof(Interface),
                                           reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }

 private:
    Microsoft::WRL::ComPtr<bench::HostSite> m_site;
    windows::LateBound m_control;
    HRESULT m_loaded = S_OK;
};

}  // namespace krv::tests
