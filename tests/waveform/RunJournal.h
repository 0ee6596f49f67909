// RunJournal: one journal of what a run's user and its instrument see.
//
//   row1 "Overall progress..."      a message line of the progress dialog
//   bar1 100/1000                   a bar's value and maximum
//   line2 "..."                     the text line in place of a bar; line breaks as " | "
//   [!] title: text (OK)            a message box
//   > DownloadIQ                    a call of the instrument
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "common/Numbers.h"
#include "common/progress/frmCallback.h"
#include "tests/support/FakeServer.h"
#include "tests/support/ScriptedDesktop.h"

namespace krv::tests {

class RunJournal : public ::testing::Test {
 protected:
    using Lines = std::vector<std::string>;

    ScriptedDesktop desktop;
    std::shared_ptr<FakeServer> server = FakeServer::Make();
    Lines journal;

    RunJournal() {
        desktop.MessageBoxes.OnShow = [this](const std::string& line) { journal.push_back(line); };
        server->OnCall = [this](const std::string& call) {
            if (call != "Model" && call != "IO" && call != "Serial" && call != "SerialNumber" &&
                call != "ArbFileSelected") {
                journal.push_back("> " + call);
            }
        };
    }

    void Watch(progress::frmCallback& progressDialog) {
        desktop.Screen.OnControlChanged = [&](forms::Control& control, forms::PropertyId id) {
            if (&control.Owner() == &progressDialog) {
                NoteChange(control, id);
            }
        };
    }

    // The user presses Cancel when events are let through for the given time, counted from 1.
    void CancelAtPoll(int poll, progress::frmCallback& progressDialog) {
        for (int count = 1; count < poll; ++count) {
            desktop.Screen.Then([] {});
        }
        desktop.Screen.Then([&] { desktop.Screen.Click(progressDialog.CommandCancel); });
    }

    // The journal's lines that begin with the text.
    [[nodiscard]] Lines Of(const std::string& start) const {
        Lines found;
        for (const std::string& line : journal) {
            if (line.rfind(start, 0) == 0) {
                found.push_back(line);
            }
        }
        return found;
    }

 private:
    void NoteChange(const forms::Control& control, forms::PropertyId id) {
        const std::string row = std::to_string(control.Index() + 1);
        const std::string state = control.StateText();
        if (control.Name() == "Label1" && id == forms::PropertyId::Caption) {
            journal.push_back("row" + row + state.substr(state.find(' ')));
        } else if (control.Name() == "TextProgress" && id == forms::PropertyId::Text) {
            const auto start = state.find(' ');
            journal.push_back("line" + row + state.substr(start, state.rfind('"') + 1 - start));
        } else if (control.Name() == "ProgressBar1" && id == forms::PropertyId::Value) {
            const auto& bar = static_cast<const forms::ProgressBar&>(control);
            journal.push_back("bar" + row + ' ' + NumberToText(static_cast<double>(bar.Value)) +
                              '/' + NumberToText(static_cast<double>(bar.Max)));
        }
    }
};

}  // namespace krv::tests
