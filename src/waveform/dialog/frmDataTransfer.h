// frmDataTransfer: the modeless dialog "Download Waveform to KRV", through which the user names the
// waveform data, the event markers and the destination, and starts a download.
//
// One instance a toolbar control, created once, hidden rather than closed, reused. It holds what
// outlives a run, fills the plan of a run from its fields, starts it under the progress dialog, and
// shows the run's messages.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "common/progress/frmCallback.h"
#include "hosts/AppConnection.h"
#include "ports/desktop/Desktop.h"
#include "ports/office/Excel.h"
#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"
#include "waveform/data/Channel.h"
#include "waveform/data/DacCodes.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/data/RunRecord.h"
#include "waveform/data/RunServices.h"
#include "waveform/dialog/WaveformPreview.h"

namespace krv::waveform {

class DerivedNames;
class FileWatch;
class RangeEntry;
class SourcePages;

// List indexes of the file type and waveform type combo boxes.
namespace FileTypeIndex {
inline constexpr int Ascii = 0;
inline constexpr int LittleEndian = 1;
inline constexpr int BigEndian = 2;
}  // namespace FileTypeIndex
namespace WaveformTypeIndex {
inline constexpr int Scalable = 0;
inline constexpr int Internal14 = 1;
inline constexpr int Internal16 = 2;
}  // namespace WaveformTypeIndex

class frmDataTransfer final : public forms::Form, private progress::CallbackWork, private RunUser {
 public:
    static constexpr const char* Title = "Download Waveform to KRV";

    // The desktop and the running applications outlive the dialog; no running applications (null)
    // means that there is no spreadsheet to attach to. Without a preview there is no button for it.
    explicit frmDataTransfer(const ports::Desktop& desktop,
                             ports::RunningApplications* runningApplications = nullptr,
                             std::unique_ptr<WaveformPreview> preview = nullptr);
    ~frmDataTransfer() override;

    // --- set by the toolbar control before the dialog is shown -----------------------------------
    std::shared_ptr<hosts::AppConnection> AppConnection;
    ports::WindowHandle applicationHWND = 0;
    std::shared_ptr<ports::InstrumentServer> instrServer;
    bool DownloadRangeData = false;
    // What each download is verified with; null verifies none.
    std::shared_ptr<ports::WaveformReadback> VerifyWith;

    // --- runs ----------------------------------------------------------------------------------
    // Checks every field that the chosen source and type need; shows the first failure in a message
    // box and returns nothing. Recomputes IQInterleaved and UseQData.
    [[nodiscard]] std::optional<DownloadPlan> ValidateDownloadInputs(
        RunMode mode = RunMode::Validate);

    // Runs under the progress dialog; true when the run reached its end. False without any effect
    // while another run is under way.
    bool StartRun(bool download);
    // The same up to the converted codes; nothing is asked of the instrument but its model.
    bool StartConversion();

    void UpdateValidateCaption();
    // The file-watch check: brings derived names up to date, forgets what was read from a file
    // whose name or date has changed, and marks names without a file.
    void WatchFiles();
    // Forgets what was read from all files; their count boxes empty.
    void ForgetFileData();

    // The spreadsheet application behind the range boxes; null without one.
    [[nodiscard]] const std::shared_ptr<ports::ExcelApplication>& Excel() const noexcept {
        return m_excel;
    }
    [[nodiscard]] const ports::Desktop& Services() const noexcept { return m_desktop; }
    // The progress dialog, loaded on first use.
    [[nodiscard]] progress::frmCallback& Callback1() noexcept { return m_progress; }
    // Shows a message box with the dialog's caption as title.
    ports::MessageAnswer Tell(const std::string& text, ports::MessageIcon icon,
                              ports::MessageButtons buttons = ports::MessageButtons::Ok) override;

    // --- state ---------------------------------------------------------------------------------
    WaveformData Data;
    DacCodes Codes;
    RunRecord LastRun;
    // The sheets that the range texts led to when they were last checked; empty where they led to
    // none or the spreadsheet doesn't say.
    ports::SheetName IRangeSheet;
    ports::SheetName QRangeSheet;
    bool IQInterleaved = false;
    bool UseQData = false;
    bool RS232WarningShown = false;
    bool DownloadMode = false;
    bool RunSucceeded = false;
    bool Busy = false;

    // --- controls, in the order of the form, which is the tab order ----------------------------
    forms::Frame frameFileFolders{*this, "frameFileFolders"};
    forms::Label labelSource{*this, "labelSource", &frameFileFolders};
    forms::OptionButton optSpreadsheet{*this, "optSpreadsheet", &frameFileFolders};
    forms::OptionButton optFileFolders{*this, "optFileFolders", &frameFileFolders};
    forms::Label labelFileType{*this, "labelFileType", &frameFileFolders};
    forms::ComboBox cboFileTypeWF{*this, "cboFileTypeWF", &frameFileFolders};
    forms::Label labelType{*this, "labelType", &frameFileFolders};
    forms::ComboBox cboWaveformType{*this, "cboWaveformType", &frameFileFolders};
    forms::Label labelIFileName{*this, "labelIFileName", &frameFileFolders};
    forms::TextBox TextIFileName{*this, "TextIFileName", &frameFileFolders};
    forms::CommandButton cmdIBrowse{*this, "cmdIBrowse", &frameFileFolders};
    forms::Label labelNumberOfPoints{*this, "labelNumberOfPoints", &frameFileFolders};
    forms::TextBox textISize{*this, "textISize", &frameFileFolders};
    forms::Label labelQFileName{*this, "labelQFileName", &frameFileFolders};
    forms::TextBox TextQFileName{*this, "TextQFileName", &frameFileFolders};
    forms::CommandButton cmdQBrowse{*this, "cmdQBrowse", &frameFileFolders};
    forms::TextBox textQSize{*this, "textQSize", &frameFileFolders};
    forms::CheckBox checkAutoFindQ{*this, "checkAutoFindQ", &frameFileFolders};

    forms::Frame frameSpreadSheet{*this, "frameSpreadSheet"};
    forms::Label labelSourceSS{*this, "labelSourceSS", &frameSpreadSheet};
    forms::OptionButton optSpreadSheetSS{*this, "optSpreadSheetSS", &frameSpreadSheet};
    forms::OptionButton optFileFoldersSS{*this, "optFileFoldersSS", &frameSpreadSheet};
    forms::Label labelFileTypeSS{*this, "labelFileTypeSS", &frameSpreadSheet};
    forms::ComboBox cboFileTypeWFSS{*this, "cboFileTypeWFSS", &frameSpreadSheet};
    forms::Label labelTypeSS{*this, "labelTypeSS", &frameSpreadSheet};
    forms::ComboBox cboWaveformTypeSS{*this, "cboWaveformTypeSS", &frameSpreadSheet};
    forms::Label labelDataRange{*this, "labelDataRange", &frameSpreadSheet};
    forms::Label labelNumberOfPointsSS{*this, "labelNumberOfPointsSS", &frameSpreadSheet};
    forms::Label labelIData{*this, "labelIData", &frameSpreadSheet};
    forms::TextBox textIRange{*this, "textIRange", &frameSpreadSheet};
    forms::CommandButton CommandCaptureSelectionI{*this, "CommandCaptureSelectionI",
                                                  &frameSpreadSheet, "CaptureSelection"};
    forms::TextBox textINumberPoints{*this, "textINumberPoints", &frameSpreadSheet};
    forms::Label labelQData{*this, "labelQData", &frameSpreadSheet};
    forms::TextBox textQRange{*this, "textQRange", &frameSpreadSheet};
    forms::CommandButton CommandCaptureSelectionQ{*this, "CommandCaptureSelectionQ",
                                                  &frameSpreadSheet, "CaptureSelection"};
    forms::TextBox textQNumberPoints{*this, "textQNumberPoints", &frameSpreadSheet};
    forms::CheckBox Check1{*this, "Check1", &frameSpreadSheet};

    forms::Frame FrameDataFormat{*this, "FrameDataFormat"};
    forms::CheckBox chkMarkerSource{*this, "chkMarkerSource", &FrameDataFormat};
    forms::Label labelMarkerFile{*this, "labelMarkerFile", &FrameDataFormat};
    forms::TextBox TextMarker{*this, "TextMarker", &FrameDataFormat};
    forms::CommandButton cmdMarkerBrowse{*this, "cmdMarkerBrowse", &FrameDataFormat};
    forms::Label labelMarkerNumberOfPoints{*this, "labelMarkerNumberOfPoints", &FrameDataFormat};
    forms::TextBox TextMarkerFileNumPoints{*this, "TextMarkerFileNumPoints", &FrameDataFormat};
    forms::CheckBox checkAutoFindMarker{*this, "checkAutoFindMarker", &FrameDataFormat};
    forms::Label labelMarkerStart{*this, "labelMarkerStart", &FrameDataFormat};
    forms::TextBox TextMarkerStart{*this, "TextMarkerStart", &FrameDataFormat};
    forms::Label labelMarkerLength{*this, "labelMarkerLength", &FrameDataFormat};
    forms::TextBox TextMarkerLength{*this, "TextMarkerLength", &FrameDataFormat};

    forms::Frame frameDestination{*this, "frameDestination"};
    forms::Label labelScaleFactor{*this, "labelScaleFactor", &frameDestination};
    forms::TextBox TextScaleFactor{*this, "TextScaleFactor", &frameDestination};
    forms::Label labelFileName{*this, "labelFileName", &frameDestination};
    forms::TextBox TextDestinationName{*this, "TextDestinationName", &frameDestination};
    forms::CheckBox checkAutoName{*this, "checkAutoName", &frameDestination};

    forms::CommandButton CommandValidate{*this, "CommandValidate"};
    forms::CommandButton cmdDownload{*this, "cmdDownload"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};
    forms::CommandButton CommandHelp{*this, "CommandHelp"};
    forms::Timer Timer1{*this, "Timer1"};
    forms::CommonDialog commondialogIBrowse;
    forms::CommonDialog commondialogQBrowse;
    forms::CommonDialog commondialogMarkerBrowse;
    // Behind all others; null without a preview.
    std::unique_ptr<forms::CommandButton> cmdPreview;

 protected:
    void OnLoad() override;
    void OnActivate() override;
    bool OnKeyDown(int keyCode, bool shift, bool control, bool alt) override;

 private:
    void RunDownload() override;
    bool RunUnderProgress(RunMode mode);
    [[nodiscard]] bool Run();
    void ShowCount(ChannelRole channel, std::int32_t count) override;
    void CouldNotRead(const std::string& file) override { LastRun.unreadFile = file; }
    void FilesChanged() override { WatchFiles(); }

    void WireFilePage();
    void WireSpreadsheetPage();
    void WireMarkersAndDestination();
    void WireButtons();
    void AddPreviewButton();
    // A handler that ends in a message box when its work throws: nothing reaches the screen.
    forms::EventHandler Trapped(std::function<void()> work);

    void FindExcel();
    void CheckRanges();
    [[nodiscard]] bool HostIsWord() const;
    [[nodiscard]] bool SessionIsSerial() const;
    void SourceClicked(bool spreadsheet);
    void FileNameEdited(forms::TextBox& count);
    void Browse(forms::CommonDialog& browse, forms::TextBox& fileName);
    void ValidateClicked();
    void PreviewClicked();

    ports::Desktop m_desktop;
    ports::RunningApplications* m_runningApplications;
    std::shared_ptr<ports::ExcelApplication> m_excel;
    progress::frmCallback m_progress;
    // Of the latest run.
    RunMode m_mode = RunMode::Validate;
    std::unique_ptr<WaveformPreview> m_preview;
    std::unique_ptr<SourcePages> m_pages;
    std::unique_ptr<DerivedNames> m_names;
    std::unique_ptr<FileWatch> m_fileWatch;
    std::unique_ptr<RangeEntry> m_iRangeEntry;
    std::unique_ptr<RangeEntry> m_qRangeEntry;
};

}  // namespace krv::waveform
