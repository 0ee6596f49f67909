// FakeExcelHost: Excel as the application around the control: a command bar, add-ins, a status bar
// and workbooks that the test activates.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/office/ExcelHost.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeAddIn.h"
#include "tests/support/FakeCommandBar.h"

namespace krv::tests {

class FakeWorkbook final : public ports::Workbook {
 public:
    FakeWorkbook(std::string name, std::weak_ptr<ports::ExcelHost> application)
        : m_name(std::move(name)), m_application(std::move(application)) {}
    std::string Name() override { return m_name; }
    std::shared_ptr<ports::ExcelHost> Application() override { return m_application.lock(); }
    // As with a real host, each object that stands for a workbook may be another one.
    bool IsSame(ports::Workbook& other) override { return other.Name() == m_name; }

 private:
    std::string m_name;
    std::weak_ptr<ports::ExcelHost> m_application;
};

class FakeCell final : public ports::Cell {
 public:
    double Left() override { return 48; }
    double Top() override { return 12.75; }
};

class FakeWorksheet final : public ports::Worksheet,
                            public ports::Shape,
                            public std::enable_shared_from_this<FakeWorksheet> {
 public:
    explicit FakeWorksheet(CallLog& log) : m_log(log) {}
    std::shared_ptr<ports::Shape> AddPicture(const ports::PictureToAdd& picture) override {
        std::ostringstream line;
        line << "add " << picture.file << (picture.linkToFile ? " linked" : "")
             << (picture.saveWithDocument ? " saved" : "") << " at " << picture.left << ','
             << picture.top << " size " << picture.width << 'x' << picture.height;
        m_log.Note(line.str());
        return shared_from_this();
    }
    void ScaleHeight(double factor, bool relativeToOriginalSize) override {
        NoteScale("height", factor, relativeToOriginalSize);
    }
    void ScaleWidth(double factor, bool relativeToOriginalSize) override {
        NoteScale("width", factor, relativeToOriginalSize);
    }

 private:
    void NoteScale(const char* side, double factor, bool relativeToOriginalSize) {
        m_log.Note(std::string(side) + ' ' + std::to_string(factor).substr(0, 3) +
                   (relativeToOriginalSize ? " of the original" : " of now"));
    }
    CallLog& m_log;
};

class FakeExcelHost final : public ports::ExcelHost,
                            public std::enable_shared_from_this<FakeExcelHost> {
 public:
    explicit FakeExcelHost(CallLog& log) : Bar(std::make_shared<FakeCommandBar>(log)), m_log(log) {}

    std::shared_ptr<FakeCommandBar> Bar;
    std::vector<std::shared_ptr<ports::AddIn>> InstalledAddIns;
    bool StatusBarDisplayed = true;
    // Empty when no workbook is open.
    std::string Active = "Book1";
    std::vector<ports::WorkbookEvents*> Receivers;

    // The user brings another workbook to the front; the controls of one that is opened load
    // before.
    void SwitchTo(const std::string& name) {
        FakeWorkbook before(std::exchange(Active, name), weak_from_this());
        FakeWorkbook after(name, weak_from_this());
        for (ports::WorkbookEvents* receiver : Receivers) {
            receiver->OnWorkbookDeactivate(before);
        }
        for (ports::WorkbookEvents* receiver : Receivers) {
            receiver->OnWorkbookActivate(after);
        }
    }

    std::shared_ptr<ports::Range> ResolveRange(const std::string&) override { throw Error(1004); }
    std::shared_ptr<ports::Range> Selection() override { throw Error(1004); }
    std::shared_ptr<ports::CommandBar> CommandBarByName(const std::string& name) override {
        m_log.Note("bar " + name);
        return Bar;
    }
    std::vector<std::shared_ptr<ports::AddIn>> AddIns() override { return InstalledAddIns; }
    bool IsStatusBarDisplayed() override { return StatusBarDisplayed; }
    void SetStatusBarText(const std::string& text) override { m_log.Note("status " + text); }
    void SetBusyCursor(bool isBusy) override {
        m_log.Note(isBusy ? "busy cursor" : "normal cursor");
    }
    std::shared_ptr<ports::Cell> ActiveCell() override {
        m_log.Note("active cell");
        return std::make_shared<FakeCell>();
    }
    std::shared_ptr<ports::Worksheet> ActiveSheet() override {
        m_log.Note("active sheet");
        return std::make_shared<FakeWorksheet>(m_log);
    }
    double InchesToPoints(double inches) override { return inches * 72; }
    bool ScreenUpdating = true;
    bool IsScreenUpdating() override { return ScreenUpdating; }
    void SetScreenUpdating(bool isUpdating) override {
        m_log.Note(isUpdating ? "updating" : "not updating");
    }
    std::shared_ptr<ports::Workbook> ActiveWorkbook() override {
        m_log.Note("active workbook");
        return Active.empty() ? nullptr : std::make_shared<FakeWorkbook>(Active, weak_from_this());
    }
    std::unique_ptr<Subscription> ReceiveWorkbookEvents(ports::WorkbookEvents& receiver) override {
        m_log.Note("events on");
        Receivers.push_back(&receiver);
        return std::make_unique<Ending>(*this, receiver);
    }

 private:
    class Ending final : public Subscription {
     public:
        Ending(FakeExcelHost& host, ports::WorkbookEvents& receiver)
            : m_host(host.weak_from_this()), m_receiver(receiver) {}
        ~Ending() override {
            if (const auto host = m_host.lock()) {
                std::erase(host->Receivers, &m_receiver);
            }
        }

     private:
        std::weak_ptr<FakeExcelHost> m_host;
        ports::WorkbookEvents& m_receiver;
    };

    CallLog& m_log;
};

}  // namespace krv::tests
