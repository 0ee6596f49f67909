// The download dialog's looks: where each control lies, its caption, tool tip and list items.
#pragma once

#include "common/forms/Buttons.h"

namespace krv::waveform {

class frmDataTransfer;

// Gives a new dialog its sizes, texts and design-time values, before any event handler is wired.
void ApplyLayout(frmDataTransfer& dialog);
// The same for the button beside the one that validates.
void LayOutPreviewButton(forms::CommandButton& button);

}  // namespace krv::waveform
