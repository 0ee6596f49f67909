// FakeExcelHost: Excel as the application around the control: a command bar, add-ins, a status bar
// and workbooks that the test activates.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/office/ExcelHost.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeAddIn.h"
#include "tests/support/FakeCommandBar.h"

namespace krv::testing {

class FakeWorkbook final : public office::Workbook {
 public:
    FakeWorkbook(std::string name, std::weak_ptr<office::ExcelHost> application)
        : m_name(std::move(name)), m_application(std::move(application)) {}
    std::string Name() override { return m_name; }
    std::shared_ptr<office::ExcelHost> Application() override { return m_application.lock(); }
    // As with a real host, each object that stands for a workbook may be another one.
    bool IsSame(office::Workbook& other) override { return other.Name() == m_name; }

 private:
    std::string m_name;
    std::weak_ptr<office::ExcelHost> m_application;
};

class FakeExcelHost final : public office::ExcelHost,
                            public std::enable_shared_from_this<FakeExcelHost> {
 public:
    explicit FakeExcelHost(CallLog& log) : Bar(std::make_shared<FakeCommandBar>(log)), m_log(log) {}

    std::shared_ptr<FakeCommandBar> Bar;
    std::vector<std::shared_ptr<office::AddIn>> InstalledAddIns;
    bool StatusBarDisplayed = true;
    // Empty when no workbook is open.
    std::string Active = "Book1";
    office::WorkbookEvents* Receiver = nullptr;

    // The user brings another workbook to the front.
    void SwitchTo(const std::string& name) {
        FakeWorkbook before(Active, weak_from_this());
        FakeWorkbook after(name, weak_from_this());
        Active = name;
        if (Receiver != nullptr) {
            Receiver->OnWorkbookDeactivate(before);
            Receiver->OnWorkbookActivate(after);
        }
    }

    std::shared_ptr<office::Range> ResolveRange(const std::string&) override { throw Error(1004); }
    std::shared_ptr<office::Range> Selection() override { throw Error(1004); }
    std::shared_ptr<office::CommandBar> CommandBarByName(const std::string& name) override {
        m_log.Note("bar " + name);
        return Bar;
    }
    std::vector<std::shared_ptr<office::AddIn>> AddIns() override { return InstalledAddIns; }
    bool IsStatusBarDisplayed() override { return StatusBarDisplayed; }
    void SetStatusBarText(const std::string& text) override { m_log.Note("status " + text); }
    void SetCursor(std::int32_t cursor) override { m_log.Note("cursor " + std::to_string(cursor)); }
    std::shared_ptr<office::Workbook> ActiveWorkbook() override {
        m_log.Note("active workbook");
        return Active.empty() ? nullptr : std::make_shared<FakeWorkbook>(Active, weak_from_this());
    }
    std::unique_ptr<Subscription> ReceiveWorkbookEvents(office::WorkbookEvents& receiver) override {
        m_log.Note("events on");
        Receiver = &receiver;
        return std::make_unique<Ending>(*this);
    }

 private:
    class Ending final : public Subscription {
     public:
        explicit Ending(FakeExcelHost& host) : m_host(host.weak_from_this()) {}
        ~Ending() override {
            if (const auto host = m_host.lock()) {
                host->Receiver = nullptr;
            }
        }

     private:
        std::weak_ptr<FakeExcelHost> m_host;
    };

    CallLog& m_log;
};

}  // namespace krv::testing
