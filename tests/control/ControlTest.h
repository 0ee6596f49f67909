// ControlTest: the toolbar control between doubles of its host, the suite and the desktop, with one
// log for what they are asked.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "control/KRVControl.h"
#include "tests/support/FakeDiscovery.h"
#include "tests/support/FakeHosts.h"
#include "tests/support/FakeSuite.h"
#include "tests/support/QuietAppConnection.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {

// A host adapter that accepts what the test says and logs the rest.
class LoggingAdapter final : public QuietAppConnection {
 public:
    LoggingAdapter(CallLog& log, std::string name, bool accepts,
                   const std::function<void()>& onPicture)
        : m_log(log), m_name(std::move(name)), m_accepts(accepts), m_onPicture(onPicture) {}

    bool Init(const std::shared_ptr<ports::HostApplication>& app,
              const std::shared_ptr<ports::KRVServer>& server, hosts::HostedControl& ctl,
              ports::DeviceContext m_HDC) override {
        m_log.Note(m_name + " init " + std::to_string(m_HDC) + (app ? "" : " without host") +
                   (server ? "" : " without server") +
                   (ctl.OwnToolbar() ? "" : " without toolbar"));
        m_app = app;
        return m_accepts;
    }
    hosts::SavedDataCvalues SavedDataCValue() override {
        return m_name == "excel" ? hosts::ExcelSaved : hosts::WordSaved;
    }
    void WriteProperties(PropertyBag& propBag) override { propBag.Write("adapter", m_name); }
    void ReadProperties(PropertyBag& propBag) override {
        m_log.Note(m_name + " read " + propBag.ReadText("adapter", "nothing"));
    }
    std::shared_ptr<ports::HostApplication> hostApp() override { return m_app; }
    void DoPictureTransfer() override {
        m_log.Note("picture");
        if (m_onPicture) {
            m_onPicture();
        }
    }
    void UpdateConnectedIconAndTooltip(const std::string& hostName) override {
        m_log.Note("connected look " + hostName);
    }
    void EnableToolbarButtons(std::int16_t ConnectType) override {
        m_log.Note("enable " + std::to_string(ConnectType));
    }
    void SetBusyCursor(bool val) override { m_log.Note(val ? "busy" : "idle"); }
    void DoHelp(ports::WindowHandle topHwnd, std::int32_t contextID) override {
        m_log.Note("help " + std::to_string(topHwnd) + ' ' + std::to_string(contextID));
    }
    void SetInitialToolbarState() override { m_log.Note("initial state"); }

 private:
    CallLog& m_log;
    std::string m_name;
    bool m_accepts;
    const std::function<void()>& m_onPicture;
    std::shared_ptr<ports::HostApplication> m_app;
};

class LoggingAdapters final : public hosts::AdapterFactory {
 public:
    explicit LoggingAdapters(CallLog& log) : m_log(log) {}
    bool ExcelAccepts = true;
    bool WordAccepts = false;
    // Fetches the picture in an adapter's place; may be none.
    std::function<void()> OnPicture;

    std::shared_ptr<hosts::AppConnection> CreateAdapter(hosts::SavedDataCvalues kind) override {
        const auto adapter =
            kind == hosts::ExcelSaved
                ? std::make_shared<LoggingAdapter>(m_log, "excel", ExcelAccepts, OnPicture)
                : std::make_shared<LoggingAdapter>(m_log, "word", WordAccepts, OnPicture);
        Last = adapter;
        return adapter;
    }
    // The one that was created last.
    std::weak_ptr<hosts::AppConnection> Last;

 private:
    CallLog& m_log;
};

class LoggingDialogs final : public about::AboutBox {
 public:
    explicit LoggingDialogs(CallLog& log) : m_log(log) {}
    void ShowAbout(const std::vector<std::string>& components) override {
        m_log.Note("about " + std::to_string(components.size()) + ' ' + components.front());
    }

 private:
    CallLog& m_log;
};

class ControlTest : public ::testing::Test {
 protected:
    CallLog log;
    ScriptedDesktop desk;
    FakeSuite suite{log};
    FakeSurface surface{log};
    LoggingAdapters adapters{log};
    LoggingDialogs dialogs{log};
    std::shared_ptr<FakeDiscovery> discovery = std::make_shared<FakeDiscovery>(log);
    std::shared_ptr<FakeInstrumentState> states = std::make_shared<FakeInstrumentState>(log);
    std::shared_ptr<ports::HostApplication> host = std::make_shared<ForeignHost>();
    std::optional<control::KRVControl> control{
        std::in_place,
        control::ControlServices{desk.Services(), surface, suite, adapters, dialogs}};

    ControlTest() {
        desk.Screen.MakeForeign =
            [this](const std::string& progId) -> std::shared_ptr<ports::ForeignObject> {
            if (progId == ports::ProgId::InstrumentState) {
                return states;
            }
            return progId == ports::ProgId::Discovery ? discovery : nullptr;
        };
    }

    // Another control between the same doubles.
    void Reopen() {
        control.emplace(
            control::ControlServices{desk.Services(), surface, suite, adapters, dialogs});
    }
    // A control with an adapter, and a log that starts empty.
    void AttachHost() {
        control->SetConnectedApplication(host);
        log.Take();
    }
    std::string Boxes() { return desk.MessageBoxes.TakeShown(); }
    std::string Shows() {
        std::string text;
        for (const std::string& show : std::exchange(desk.Screen.Shows, {})) {
            text += (text.empty() ? "" : "; ") + show;
        }
        return text;
    }
};

}  // namespace krv::tests
