// FormFilling: enters a command line's arguments into the download dialog, as a user would.
#pragma once

#include <string>

#include "cli/Arguments.h"
#include "cli/TerminalScreen.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {

class FormFilling {
 public:
    FormFilling(TerminalScreen& screen, waveform::frmDataTransfer& dialog)
        : m_screen(screen), m_dialog(dialog) {}

    // Fills a loaded dialog. Throws UsageError where a control doesn't take what is asked for.
    void Fill(const WaveformArguments& arguments);

 private:
    void FillTypes(const WaveformArguments& arguments);
    void FillSources(const WaveformArguments& arguments);
    void FillMarkers(const WaveformArguments& arguments);
    void FillDestination(const WaveformArguments& arguments);

    // Each throws UsageError with the refusal when the control doesn't take the input.
    void Select(forms::ComboBox& box, int index, const std::string& refusal);
    void Check(forms::CheckBox& box, bool value, const std::string& refusal);
    // Checks the box with a click, so that what it fills in follows the present entries.
    void CheckAgain(forms::CheckBox& box, const std::string& refusal);
    void Type(forms::TextBox& box, const std::string& text, const std::string& refusal);

    TerminalScreen& m_screen;
    waveform::frmDataTransfer& m_dialog;
};

}  // namespace krv::cli
