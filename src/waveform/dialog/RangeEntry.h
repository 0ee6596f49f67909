// RangeEntry: one data range box of the spreadsheet page with its count box and capture button.
#pragma once

#include "common/forms/Controls.h"

namespace krv::waveform {

class frmDataTransfer;

class RangeEntry {
 public:
    RangeEntry(frmDataTransfer& dialog, forms::TextBox& range, forms::TextBox& count)
        : m_dialog(dialog), m_range(range), m_count(count) {}

    // Shows how many cells the text names, or "Error" with the reason. Reports nothing else.
    void Check();

    // Puts the address of the spreadsheet's selection into the box; a selection that is no single
    // row or column is refused in a message box. Throws Error when there is no selection to take.
    void CaptureSelection();

 private:
    [[nodiscard]] std::int32_t CountCells(const std::string& text) const;

    frmDataTransfer& m_dialog;
    forms::TextBox& m_range;
    forms::TextBox& m_count;
};

}  // namespace krv::waveform
