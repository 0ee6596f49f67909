// TerminalScreen: a screen on which the command line plays the user. Only the progress dialog is
// ever seen, as live lines; Ctrl-C clicks its Cancel button.
//
// Timers don't run: a timer waits for the user to pause, and this one types and clicks at once.
#pragma once

#include <string>

#include "cli/CancelKey.h"
#include "cli/ProgressLines.h"
#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "common/progress/frmCallback.h"
#include "ports/desktop/EventPump.h"
#include "ports/desktop/FormScreen.h"

namespace krv::cli {

class TerminalScreen final : public ports::FormScreen, public ports::EventPump {
 public:
    TerminalScreen(CancelKey& cancelKey, ProgressLines& progress)
        : m_cancelKey(cancelKey), m_progress(progress) {}

    // The user's actions; each returns whether the control took it.
    bool Click(forms::CommandButton& button) { return button.UserClicks(Input()); }
    bool Click(forms::CheckBox& box) { return box.UserClicks(Input()); }
    bool Type(forms::TextBox& box, const std::string& text) { return box.UserTypes(Input(), text); }
    bool Select(forms::ComboBox& box, int index) { return box.UserSelects(Input(), index); }

    // Shows something with the progress that the dialog doesn't know.
    void ShowNote(const std::string& note);

    void FormLoaded(forms::Form& form) override;
    void FormUnloaded(forms::Form& form) override;
    void ShowModeless(forms::Form& form, ports::WindowHandle owner) override;
    void RunModal(forms::Form& form, ports::WindowHandle owner) override;
    void HideForm(forms::Form& form) override;
    void Repaint(forms::Form& form) override;
    void Repaint(forms::Control& control) override;
    void FormChanged(forms::Form& form, forms::PropertyId property) override;
    void ControlChanged(forms::Control& control, forms::PropertyId property) override;

    void ProcessPendingEvents() override;

 private:
    void DrawProgress();

    CancelKey& m_cancelKey;
    ProgressLines& m_progress;
    // The progress dialog while it is on the screen.
    progress::frmCallback* m_dialog = nullptr;
};

}  // namespace krv::cli
