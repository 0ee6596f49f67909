// DialogTest: the download dialog on a scripted desktop, driven by a little language.
//
// A test is a table of steps. A step is one action of the user and the lines that it must lead to:
// a control's state as the form prints it, in single quotes (tool tips only where the line names
// one), or, starting with "[", a message box. Boxes that no line names fail the step.
//
//   click C | type C TEXT | select C INDEX | press F1 | wait MS | activate | close
//   choose PATH    what the next file dialog returns; without a path it is cancelled
//   put PATH | touch PATH | delete PATH    a file appears, gets another date, goes away
//   mark TEXT      what is selected in the worksheet
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <istream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "hosts/HelpTopics.h"
#include "tests/support/FakeExcel.h"
#include "tests/support/FakeServer.h"
#include "tests/support/FindControl.h"
#include "tests/support/QuietAppConnection.h"
#include "tests/support/ScriptedDesktop.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::tests {

class FakeHost final : public QuietAppConnection {
 public:
    hosts::SavedDataCvalues Kind = hosts::ExcelSaved;
    std::shared_ptr<ports::HostApplication> App;
    std::vector<std::string> HelpCalls;

    hosts::SavedDataCvalues SavedDataCValue() override { return Kind; }
    std::shared_ptr<ports::HostApplication> hostApp() override { return App; }
    void DoHelp(ports::WindowHandle topHwnd, std::int32_t contextID) override {
        HelpCalls.push_back(hosts::HelpTopic(contextID) + " for window " + std::to_string(topHwnd));
    }
};

class FakeRunningApplications final : public ports::RunningApplications {
 public:
    std::shared_ptr<ports::HostApplication> Running;
    std::vector<std::string> Asked;

    std::shared_ptr<ports::HostApplication> GetRunning(const std::string& className) override {
        Asked.push_back(className);
        if (Running == nullptr) {
            throw Error(429, "ActiveX component can't create object");
        }
        return Running;
    }
};

struct Step {
    std::string action;
    std::vector<std::string> lines;
};

class DialogTest : public ::testing::Test {
 protected:
    ScriptedDesktop m_desktop;
    FakeRunningApplications m_running;
    std::shared_ptr<FakeExcel> m_excel = std::make_shared<FakeExcel>();
    std::shared_ptr<FakeHost> m_host = std::make_shared<FakeHost>();
    std::shared_ptr<FakeServer> m_server = FakeServer::Make();
    waveform::frmDataTransfer m_dialog{m_desktop.Services(), &m_running};

    void Show() {
        m_dialog.AppConnection = m_host;
        m_dialog.instrServer = m_server;
        m_dialog.ShowModeless();
        m_desktop.Screen.Activate(m_dialog);
    }

    void ShowInExcel() {
        m_host->App = m_excel;
        Show();
    }

    void Run(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.action);
            m_desktop.MessageBoxes.Shown.clear();
            Do(step.action);
            Expect(step.lines);
        }
    }

    void Expect(const std::vector<std::string>& lines) {
        std::vector<std::string> boxes;
        for (const std::string& line : lines) {
            if (line.front() == '[') {
                boxes.push_back(line);
            } else {
                EXPECT_EQ(StateLike(line), line);
            }
        }
        EXPECT_EQ(m_desktop.MessageBoxes.Shown, boxes);
    }

    // The state of the control that the line is about, with as much of it as the line has.
    std::string StateLike(const std::string& line) {
        std::string state = Find(line.substr(0, line.find(' '))).StateText();
        std::replace(state.begin(), state.end(), '"', '\'');
        const std::size_t tip = state.find(" tip=");
        return line.find(" tip=") == std::string::npos ? state.substr(0, tip) : state;
    }

    void Do(const std::string& action) {
        std::istringstream words(action);
        std::string verb;
        std::string name;
        words >> verb >> name;
        const std::string argument =
            action.size() > verb.size() ? action.substr(verb.size() + 1) : "";
        std::string text;
        std::getline(words >> std::ws, text);
        ScriptedScreen& screen = m_desktop.Screen;
        MemoryFiles& files = m_desktop.Files;
        if (verb == "click") {
            Click(Find(name));
        } else if (verb == "type") {
            screen.Type(dynamic_cast<forms::TextBox&>(Find(name)), text);
        } else if (verb == "select") {
            screen.Select(dynamic_cast<forms::ComboBox&>(Find(name)), std::stoi(text));
        } else if (verb == "wait") {
            screen.Advance(std::stoi(argument));
        } else if (verb == "choose") {
            m_desktop.FileDialogs.Choice.reset();
            if (!argument.empty()) {
                m_desktop.FileDialogs.Choice = argument;
            }
        } else if (verb == "put") {
            files.Put(argument, "1\r\n2\r\n");
        } else if (verb == "touch") {
            ++files.Entries.at(argument).date;
        } else if (verb == "delete") {
            files.Entries.erase(argument);
        } else if (verb == "mark") {
            m_excel->SelectionText = argument;
        } else if (verb == "activate") {
            screen.Activate(m_dialog);
        } else if (verb == "press") {
            EXPECT_TRUE(screen.Press(m_dialog, forms::KeyCode::F1));
        } else if (verb == "close") {
            screen.Close(m_dialog);
        } else {
            ADD_FAILURE() << "unknown action";
        }
    }

    forms::Control& Find(const std::string& name) {
        forms::Control* const control = FindControl(m_dialog, name);
        if (control == nullptr) {
            throw std::logic_error("no control " + name);
        }
        return *control;
    }

 private:
    void Click(forms::Control& control) {
        ScriptedScreen& screen = m_desktop.Screen;
        if (auto* button = dynamic_cast<forms::CommandButton*>(&control)) {
            screen.Click(*button);
        } else if (auto* option = dynamic_cast<forms::OptionButton*>(&control)) {
            screen.Click(*option);
        } else {
            screen.Click(dynamic_cast<forms::CheckBox&>(control));
        }
    }
};

}  // namespace krv::tests
