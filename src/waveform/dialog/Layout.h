// The download dialog's looks: where each control lies, its caption, tool tip and list items.
#pragma once

namespace krv::waveform {

class frmDataTransfer;

// Gives a new dialog its sizes, texts and design-time values, before any event handler is wired.
// Throws Error 340 when the table names a control that the dialog does not have.
void ApplyLayout(frmDataTransfer& dialog);

}  // namespace krv::waveform
