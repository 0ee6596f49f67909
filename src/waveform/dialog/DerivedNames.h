// DerivedNames: the boxes that the dialog fills by itself (Q file, marker file, destination name),
// with the check boxes that say so and the switch between marker file and marker pulse.
#pragma once

#include <string>

#include "common/forms/Controls.h"
#include "waveform/dialog/DerivedFileName.h"

namespace krv::waveform {

class frmDataTransfer;

class DerivedNames {
 public:
    explicit DerivedNames(frmDataTransfer& dialog) : m_dialog(dialog) {}

    // Fills and locks the box that the check box has just been set for, or hands it back.
    void FindQClicked();
    void FindMarkerClicked();
    void AutoNameClicked();

    // Enables either the marker file's fields or the marker pulse's.
    void MarkerSourceClicked();

    // Brings derived names up to date with the I file name: a name is derived again when the I file
    // name is another one, and while no file has been found.
    void Follow();
    void UpdateDestinationName();

 private:
    void Derive(forms::TextBox& box, const DerivedNameRule& rule);
    [[nodiscard]] std::string IFileName() const;

    frmDataTransfer& m_dialog;
    // The I file name that the names in the boxes were derived from.
    std::string m_derivedFrom;
};

}  // namespace krv::waveform
