#include "waveform/dialog/DerivedNames.h"

#include "common/Text.h"
#include "waveform/dialog/AutoName.h"
#include "waveform/dialog/BoxLooks.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

// A box that the dialog fills takes no typing.
void Lock(forms::TextBox& box, bool locked) {
    box.Locked = locked;
    box.TabStop = !locked;
}

void SetUsable(forms::TextBox& box, bool usable) {
    box.Enabled = usable;
    Paint(box, usable);
}

}  // namespace

std::string DerivedNames::IFileName() const {
    return std::string(PathIn(m_dialog.TextIFileName.Text.Get()));
}

void DerivedNames::Derive(forms::TextBox& box, const DerivedNameRule& rule) {
    box.Text = DerivedFileName(IFileName(), rule, m_dialog.Services().files);
}

void DerivedNames::FindQClicked() {
    const bool filled = m_dialog.checkAutoFindQ.Value;
    if (filled) {
        Derive(m_dialog.TextQFileName, QFileRule);
    }
    Lock(m_dialog.TextQFileName, filled);
    Paint(m_dialog.TextQFileName, !filled);
    m_dialog.cmdQBrowse.Enabled = !filled;
    m_dialog.cmdQBrowse.TabStop = !filled;
    UpdateDestinationName();
}

void DerivedNames::FindMarkerClicked() {
    if (m_dialog.checkAutoFindMarker.Value) {
        Derive(m_dialog.TextMarker, MarkerFileRule);
    }
    MarkerSourceClicked();
    UpdateDestinationName();
}

void DerivedNames::MarkerSourceClicked() {
    const bool fromFile = m_dialog.chkMarkerSource.Value;
    const bool filled = m_dialog.checkAutoFindMarker.Value;
    Lock(m_dialog.TextMarker, filled);
    m_dialog.TextMarker.Enabled = fromFile;
    Paint(m_dialog.TextMarker, fromFile && !filled);
    m_dialog.cmdMarkerBrowse.Enabled = fromFile && !filled;
    m_dialog.cmdMarkerBrowse.TabStop = !filled;
    m_dialog.checkAutoFindMarker.Enabled = fromFile;
    SetUsable(m_dialog.TextMarkerStart, !fromFile);
    SetUsable(m_dialog.TextMarkerLength, !fromFile);
}

void DerivedNames::AutoNameClicked() {
    const bool filled = m_dialog.checkAutoName.Value;
    UpdateDestinationName();
    Lock(m_dialog.TextDestinationName, filled);
    Paint(m_dialog.TextDestinationName, !filled);
}

void DerivedNames::Follow() {
    const std::string iFileName = IFileName();
    const bool another = iFileName != m_derivedFrom;
    m_derivedFrom = iFileName;
    if (m_dialog.checkAutoFindQ.Value && (another || m_dialog.TextQFileName.Text.Get().empty())) {
        Derive(m_dialog.TextQFileName, QFileRule);
    }
    if (m_dialog.checkAutoFindMarker.Value && (another || m_dialog.TextMarker.Text.Get().empty())) {
        Derive(m_dialog.TextMarker, MarkerFileRule);
    }
    UpdateDestinationName();
}

void DerivedNames::UpdateDestinationName() {
    if (m_dialog.checkAutoName.Value) {
        m_dialog.TextDestinationName.Text = m_dialog.optFileFolders.Value
                                                ? AutoName(IFileName())
                                                : std::string(SpreadsheetAutoName);
    }
}

}  // namespace krv::waveform
