#include "cli/TerminalScreen.h"

#include <stdexcept>

namespace krv::cli {

void TerminalScreen::ShowNote(const std::string& note) {
    m_progress.SetNote(note);
    if (m_dialog != nullptr) {
        DrawProgress();
    }
}

void TerminalScreen::FormLoaded(forms::Form& /*form*/) {}

void TerminalScreen::FormUnloaded(forms::Form& form) {
    if (&form == m_dialog) {
        m_dialog = nullptr;
    }
}

void TerminalScreen::ShowModeless(forms::Form& form, ports::WindowHandle /*owner*/) {
    if (auto* const dialog = dynamic_cast<progress::frmCallback*>(&form)) {
        m_dialog = dialog;
        m_cancelKey.SetUnattended(!dialog->CommandCancel.Enabled);
    }
    form.UserActivates(Input());
}

void TerminalScreen::RunModal(forms::Form& form, ports::WindowHandle owner) {
    ShowModeless(form, owner);
    if (form.IsVisible()) {
        // It would wait for a user, and the only one is the command line, which waits here.
        throw std::logic_error("The form " + form.Name() + " can't be shown on a terminal.");
    }
}

void TerminalScreen::HideForm(forms::Form& form) {
    if (&form == m_dialog) {
        m_dialog = nullptr;
        m_cancelKey.SetUnattended(true);
        m_progress.Erase();
    }
}

void TerminalScreen::Repaint(forms::Form& form) {
    if (&form == m_dialog) {
        DrawProgress();
    }
}

void TerminalScreen::Repaint(forms::Control& control) {
    Repaint(control.Owner());
}

void TerminalScreen::FormChanged(forms::Form& form, forms::PropertyId /*property*/) {
    Repaint(form);
}

void TerminalScreen::ControlChanged(forms::Control& control, forms::PropertyId property) {
    // While the button is disabled Ctrl-C can't click it, and prints how to end the program
    // instead.
    if (m_dialog != nullptr && &control == &m_dialog->CommandCancel &&
        property == forms::PropertyId::Enabled) {
        m_cancelKey.SetUnattended(!m_dialog->CommandCancel.Enabled);
    }
    Repaint(control);
}

void TerminalScreen::ProcessPendingEvents() {
    if (m_dialog != nullptr && m_cancelKey.Pressed() && m_dialog->CommandCancel.TakesUserInput() &&
        m_cancelKey.Take()) {
        Click(m_dialog->CommandCancel);
    }
}

void TerminalScreen::DrawProgress() {
    m_progress.Draw(*m_dialog);
}

}  // namespace krv::cli
