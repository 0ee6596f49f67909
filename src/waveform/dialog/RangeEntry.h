// RangeEntry: one data range box of the spreadsheet page with its count box and capture button.
#pragma once

#include "common/forms/Controls.h"
#include "ports/office/Excel.h"

namespace krv::waveform {

class frmDataTransfer;

class RangeEntry {
 public:
    // All of these outlive the entry.
    RangeEntry(frmDataTransfer& dialog, forms::TextBox& range, forms::TextBox& count,
               ports::SheetName& sheet)
        : m_dialog(dialog), m_range(range), m_count(count), m_sheet(sheet) {}

    // Shows how many cells the text names, or "Error" with the reason, and notes the sheet that
    // they lie on. Reports nothing else.
    void Check();
    // The same when not the text but what it stands for may have changed.
    void CheckAgain();

    // Puts the address of the spreadsheet's selection into the box; a selection that is no single
    // row or column is refused in a message box. Throws Error when there is no selection to take.
    void CaptureSelection();

 private:
    [[nodiscard]] std::int32_t CountCells(const std::string& text);

    frmDataTransfer& m_dialog;
    forms::TextBox& m_range;
    forms::TextBox& m_count;
    ports::SheetName& m_sheet;
};

}  // namespace krv::waveform
