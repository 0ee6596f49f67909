// The download dialog's looks: where each control lies, its caption, tool tip and list items.
#pragma once

namespace krv::waveform {

class frmDataTransfer;

// Gives a new dialog its sizes, texts and design-time values, before any event handler is wired.
void ApplyLayout(frmDataTransfer& dialog);

}  // namespace krv::waveform
