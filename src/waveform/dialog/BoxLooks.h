// How boxes look: white to type in and grey otherwise; a count box shows a number of points,
// nothing, or "Error" with the reason as its tool tip.
#pragma once

#include <string>

#include "common/forms/Controls.h"

namespace krv::waveform {

// A dark red, 0x00BBGGRR: it stands out from black text and is readable on grey.
inline constexpr forms::Color ErrorColor = 0x000000A0;
inline constexpr const char* ErrorText = "Error";

inline void Paint(forms::Control& box, bool white) {
    box.BackColor = white ? forms::SystemColor::WindowBackground : forms::SystemColor::ButtonFace;
}

inline void ShowCount(forms::TextBox& box, const std::string& count, const std::string& tip) {
    box.Text = count;
    box.ToolTipText = tip;
    box.ForeColor = forms::SystemColor::WindowText;
}

inline void ShowCountError(forms::TextBox& box, const std::string& message) {
    box.Text = ErrorText;
    box.ToolTipText = message;
    box.ForeColor = ErrorColor;
}

}  // namespace krv::waveform
