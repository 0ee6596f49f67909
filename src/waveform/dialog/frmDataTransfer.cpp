#include "waveform/dialog/frmDataTransfer.h"

#include <utility>

#include "common/Text.h"
#include "hosts/HelpTopics.h"
#include "hosts/OfficeProcedures.h"
#include "waveform/dialog/DerivedNames.h"
#include "waveform/dialog/FileWatch.h"
#include "waveform/dialog/FormReading.h"
#include "waveform/dialog/Layout.h"
#include "waveform/dialog/RangeEntry.h"
#include "waveform/dialog/SourcePages.h"
#include "waveform/run/Connection.h"

namespace krv::waveform {

using ports::MessageIcon;

namespace {

// From the last keystroke in a file name to the file-watch check.
constexpr int WatchDelayMs = 250;

constexpr const char* SerialRefusal =
    "Download Arb Waveform Data is not supported over a serial (RS-232) connection.  Corvane "
    "recommends you use a GPIB card for this function.";

// Set while a piece of work runs, however it ends.
class BusyScope {
 public:
    explicit BusyScope(bool& busy) : m_busy(busy) { m_busy = true; }
    ~BusyScope() { m_busy = false; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

 private:
    bool& m_busy;
};

}  // namespace

frmDataTransfer::frmDataTransfer(const ports::Desktop& desktop,
                                 ports::RunningApplications* runningApplications,
                                 std::unique_ptr<WaveformPreview> preview)
    : Form("frmDataTransfer", desktop.screen),
      commondialogIBrowse(*this, "commondialogIBrowse", desktop.fileDialogs),
      commondialogQBrowse(*this, "commondialogQBrowse", desktop.fileDialogs),
      commondialogMarkerBrowse(*this, "commondialogMarkerBrowse", desktop.fileDialogs),
      m_desktop(desktop),
      m_runningApplications(runningApplications),
      m_progress(desktop.screen, desktop.eventPump),
      m_preview(std::move(preview)) {
    ApplyLayout(*this);
    m_pages = std::make_unique<SourcePages>(*this);
    m_names = std::make_unique<DerivedNames>(*this);
    m_fileWatch = std::make_unique<FileWatch>(*this);
    m_iRangeEntry = std::make_unique<RangeEntry>(*this, textIRange, textINumberPoints, IRangeSheet);
    m_qRangeEntry = std::make_unique<RangeEntry>(*this, textQRange, textQNumberPoints, QRangeSheet);
    WireFilePage();
    WireSpreadsheetPage();
    WireMarkersAndDestination();
    WireButtons();
    AddPreviewButton();
    // The values of the layout have raised no events: what depends on them is brought in step here.
    m_pages->WaveformTypeClicked();
    m_pages->RepeatFileSettings();
    m_names->MarkerSourceClicked();
    m_names->FindQClicked();
    m_names->AutoNameClicked();
}

frmDataTransfer::~frmDataTransfer() = default;

// --- wiring --------------------------------------------------------------------------------------

forms::EventHandler frmDataTransfer::Trapped(std::function<void()> work) {
    return [this, work = std::move(work)] {
        try {
            work();
        } catch (const std::exception& failure) {
            Tell(failure.what(), MessageIcon::Critical);
        }
    };
}

void frmDataTransfer::WireFilePage() {
    optSpreadsheet.OnClick = Trapped([this] { SourceClicked(true); });
    optFileFolders.OnClick = Trapped([this] { SourceClicked(false); });
    cboWaveformType.OnClick = Trapped([this] { m_pages->WaveformTypeClicked(); });
    cboFileTypeWF.OnClick = Trapped([this] {
        m_pages->RepeatFileSettings();
        ForgetFileData();
    });
    TextIFileName.OnChange = [this] { FileNameEdited(textISize); };
    TextQFileName.OnChange = [this] { FileNameEdited(textQSize); };
    cmdIBrowse.OnClick = Trapped([this] { Browse(commondialogIBrowse, TextIFileName); });
    cmdQBrowse.OnClick = Trapped([this] { Browse(commondialogQBrowse, TextQFileName); });
    checkAutoFindQ.OnClick = Trapped([this] {
        m_names->FindQClicked();
        m_pages->RepeatFileSettings();
        if (checkAutoFindQ.Value) {
            WatchFiles();
        }
    });
    Timer1.OnTimer = Trapped([this] { WatchFiles(); });
}

void frmDataTransfer::WireSpreadsheetPage() {
    optSpreadSheetSS.OnClick = Trapped([this] { SourceClicked(true); });
    optFileFoldersSS.OnClick = Trapped([this] { SourceClicked(false); });
    cboWaveformTypeSS.OnClick = Trapped([this] { m_pages->WaveformTypeSSClicked(); });
    textIRange.OnChange = [this] { m_iRangeEntry->Check(); };
    textQRange.OnChange = [this] { m_qRangeEntry->Check(); };
    CommandCaptureSelectionI.OnClick = Trapped([this] { m_iRangeEntry->CaptureSelection(); });
    CommandCaptureSelectionQ.OnClick = Trapped([this] { m_qRangeEntry->CaptureSelection(); });
}

void frmDataTransfer::WireMarkersAndDestination() {
    chkMarkerSource.OnClick = Trapped([this] { m_names->MarkerSourceClicked(); });
    TextMarker.OnChange = [this] { FileNameEdited(TextMarkerFileNumPoints); };
    cmdMarkerBrowse.OnClick = Trapped([this] { Browse(commondialogMarkerBrowse, TextMarker); });
    checkAutoFindMarker.OnClick = Trapped([this] {
        m_names->FindMarkerClicked();
        if (checkAutoFindMarker.Value) {
            WatchFiles();
        }
    });
    checkAutoName.OnClick = Trapped([this] { m_names->AutoNameClicked(); });
}

void frmDataTransfer::WireButtons() {
    CommandValidate.OnClick = Trapped([this] { ValidateClicked(); });
    cmdDownload.OnClick = Trapped([this] {
        WatchFiles();
        StartRun(true);
    });
    cmdCancel.OnClick = [this] { Hide(); };
    CommandHelp.OnClick = Trapped([this] {
        if (AppConnection != nullptr) {
            AppConnection->DoHelp(applicationHWND, hosts::HelpContext::Download);
        }
    });
}

// It comes behind the form's own controls, so that their order stays as it is.
void frmDataTransfer::AddPreviewButton() {
    if (m_preview != nullptr) {
        cmdPreview = std::make_unique<forms::CommandButton>(*this, "cmdPreview");
        LayOutPreviewButton(*cmdPreview);
        cmdPreview->OnClick = Trapped([this] { PreviewClicked(); });
    }
}

// --- events of the form --------------------------------------------------------------------------

void frmDataTransfer::OnLoad() {
    const bool word = HostIsWord();
    if (word) {
        optFileFolders.Value = true;
    }
    optSpreadsheet.Enabled = !word;
    optFileFolders.Enabled = !word;
    m_excel.reset();
    if (!word) {
        FindExcel();
    }
    CheckRanges();
}

void frmDataTransfer::CheckRanges() {
    m_iRangeEntry->CheckAgain();
    m_qRangeEntry->CheckAgain();
}

bool frmDataTransfer::HostIsWord() const {
    return AppConnection != nullptr && AppConnection->SavedDataCValue() == hosts::WordSaved;
}

void frmDataTransfer::FindExcel() {
    try {
        auto host = AppConnection != nullptr ? AppConnection->hostApp() : nullptr;
        if (host == nullptr && m_runningApplications != nullptr) {
            host = m_runningApplications->GetRunning("Excel.Application");
        }
        m_excel = std::dynamic_pointer_cast<ports::ExcelApplication>(host);
    } catch (const Error&) {
        // No spreadsheet is running; range texts then show as errors, files work as ever.
        m_excel.reset();
    }
}

void frmDataTransfer::OnActivate() {
    // The application may have been started since the dialog was loaded.
    if (!m_excel && !HostIsWord()) {
        FindExcel();
        CheckRanges();
    }
    const bool serial = SessionIsSerial();
    cmdDownload.Enabled = !serial;
    if (serial && !RS232WarningShown) {
        RS232WarningShown = true;
        Tell(SerialRefusal, MessageIcon::Exclamation);
    }
}

bool frmDataTransfer::SessionIsSerial() const {
    return instrServer != nullptr && hosts::IsSessionSerial(*instrServer);
}

bool frmDataTransfer::OnKeyDown(int keyCode, bool shift, bool control, bool alt) {
    if (keyCode != forms::KeyCode::F1 || shift || control || alt) {
        return false;
    }
    CommandHelp.OnClick();
    return true;
}

// --- events of the controls ----------------------------------------------------------------------

void frmDataTransfer::SourceClicked(bool spreadsheet) {
    m_pages->SourceClicked(spreadsheet);
    m_names->UpdateDestinationName();
    UpdateValidateCaption();
}

void frmDataTransfer::FileNameEdited(forms::TextBox& count) {
    count.ForeColor = forms::SystemColor::WindowText;
    Timer1.SetTimerEnabled(false);
    Timer1.SetInterval(WatchDelayMs);
    Timer1.SetTimerEnabled(true);
}

void frmDataTransfer::Browse(forms::CommonDialog& browse, forms::TextBox& fileName) {
    browse.FileName = PathIn(fileName.Text.Get());
    if (browse.ShowOpen()) {
        fileName.Text = browse.FileName;
    }
    WatchFiles();
}

void frmDataTransfer::ValidateClicked() {
    if (Busy) {
        return;
    }
    const BusyScope busy(Busy);
    WatchFiles();
    StartRun(false);
}

// Finds what validating finds, and says the same.
void frmDataTransfer::PreviewClicked() {
    if (Busy) {
        return;
    }
    const BusyScope busy(Busy);
    WatchFiles();
    if (StartConversion()) {
        m_preview->Show(Codes, SourceName(*this), applicationHWND);
    }
}

void frmDataTransfer::UpdateValidateCaption() {
    const std::string caption = optFileFolders.Value ? "Validate Files" : "Validate Data";
    CommandValidate.Caption = caption;
    CommandValidate.ToolTipText = caption + "  Does not initiate download.";
}

void frmDataTransfer::WatchFiles() {
    m_names->Follow();
    // After the derived names, whose change restarts the timer.
    Timer1.SetInterval(0);
    m_fileWatch->Check();
}

void frmDataTransfer::ForgetFileData() {
    m_fileWatch->ForgetAll();
    WatchFiles();
}

}  // namespace krv::waveform
