// FakeWordHost: Word as the application around the control: a command bar, add-ins, a status bar
// and documents.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/office/WordHost.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeAddIn.h"
#include "tests/support/FakeCommandBar.h"

namespace krv::tests {

class FakeWordDocument final : public ports::WordDocument {
 public:
    FakeWordDocument(CallLog& log, std::string name, std::weak_ptr<ports::WordHost> application)
        : m_log(log), m_name(std::move(name)), m_application(std::move(application)) {}
    std::shared_ptr<ports::WordHost> Application() override { return m_application.lock(); }
    void AddPicture(const std::string& fileName) override {
        m_log.Note("picture " + fileName + " into " + m_name);
    }

 private:
    CallLog& m_log;
    std::string m_name;
    std::weak_ptr<ports::WordHost> m_application;
};

// The template that carries the bar; Word asks whether to save it once a button of the bar has
// changed.
class FakeWordTemplate final : public ports::WordTemplate {
 public:
    explicit FakeWordTemplate(std::shared_ptr<FakeCommandBar> bar) : m_bar(std::move(bar)) {}
    bool IsSaved() override { return !m_bar->IsModified; }
    void SetSaved(bool isSaved) override { m_bar->IsModified = !isSaved; }

 private:
    std::shared_ptr<FakeCommandBar> m_bar;
};

class FakeWordHost final : public ports::WordHost,
                           public std::enable_shared_from_this<FakeWordHost> {
 public:
    explicit FakeWordHost(CallLog& log) : Bar(std::make_shared<FakeCommandBar>(log)), m_log(log) {}

    std::shared_ptr<FakeCommandBar> Bar;
    std::vector<std::shared_ptr<ports::AddIn>> InstalledAddIns;
    bool StatusBarDisplayed = true;
    // Empty when no document is open.
    std::string Active = "Document1";

    std::shared_ptr<ports::CommandBar> CommandBarByName(const std::string& name) override {
        m_log.Note("bar " + name);
        return Bar;
    }
    std::vector<std::shared_ptr<ports::AddIn>> AddIns() override {
        m_log.Note("add-ins");
        return InstalledAddIns;
    }
    bool IsStatusBarDisplayed() override { return StatusBarDisplayed; }
    void SetStatusBarText(const std::string& text) override { m_log.Note("status " + text); }
    void SetBusyCursor(bool isBusy) override {
        m_log.Note(isBusy ? "busy cursor" : "normal cursor");
    }
    std::shared_ptr<ports::WordDocument> ActiveDocument() override {
        if (Active.empty()) {
            throw Error(4248, "This command is not available because no document is open.");
        }
        return std::make_shared<FakeWordDocument>(m_log, Active, weak_from_this());
    }
    std::vector<std::shared_ptr<ports::WordTemplate>> Templates() override {
        return {std::make_shared<FakeWordTemplate>(Bar)};
    }

 private:
    CallLog& m_log;
};

}  // namespace krv::tests
