// WaveformJob: one check, download or conversion. It owns the dialog and every service the dialog
// needs, fills the dialog in, starts its run and prints the result.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "cli/Arguments.h"
#include "cli/CancelKey.h"
#include "cli/Console.h"
#include "cli/DownloadDestination.h"
#include "cli/ImportedFiles.h"
#include "cli/InstrumentLink.h"
#include "cli/ProgressLines.h"
#include "cli/RecordingServer.h"
#include "cli/Report.h"
#include "cli/SystemClock.h"
#include "cli/TerminalMessageBoxes.h"
#include "cli/TerminalScreen.h"
#include "cli/TransferMeter.h"
#include "cli/WaveformImport.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {

// What a job has of others that run beside it with the same files.
struct LaneWork {
    // Has read what is to be imported; null where the dialog's own readers take the files.
    const WaveformImport* import = nullptr;
    // Null where none is written.
    std::shared_ptr<suite::ConversationLog> log;
    // Where its progress is shown.
    ProgressRow* row = nullptr;
};

class WaveformJob {
 public:
    // One that is one of several (not null) writes no report file of its own.
    WaveformJob(const WaveformArguments& arguments, Console& console,
                const LaneWork* lane = nullptr);

    // Looks at the arguments and at no more. Throws UsageError for one that the dialog doesn't
    // take.
    void Prepare();
    // Returns the exit code. Every failure is printed on standard error.
    [[nodiscard]] int Run();
    // The report of the run, for the exit code that it had.
    [[nodiscard]] std::string ReportText(int exitCode);

 private:
    // A command line has no user to choose a file.
    class NoFileDialogs final : public ports::FileDialogs {
     public:
        std::optional<std::string> ChooseFileToOpen(const ports::FileDialogRequest&) override {
            return std::nullopt;
        }
        std::optional<std::string> ChooseFileToSave(const ports::FileDialogRequest&) override {
            return std::nullopt;
        }
    };

    void FillForm();
    // Reads what is imported, or takes it from the job's lane, and fills the dialog with the form
    // of it that the model takes. False where the user has cancelled.
    [[nodiscard]] bool Import();
    // Throws UsageError.
    void ProtectFiles() const;
    // Throws Error where a Q file was to be found and there is none.
    void RequireFoundQ() const;
    void Connect();
    // Looks at what the instrument holds of the download's name. False where the user doesn't want
    // it replaced.
    [[nodiscard]] bool TakeDestination();
    [[nodiscard]] bool RunDialog();
    // What the command does when the dialog's run is done.
    void Complete();
    void WriteOutput();
    [[nodiscard]] std::string OutputFile(const char* name) const;
    void PrintError(const std::string& description);

    // Behind what the dialog says of a file that holds something else than numbers.
    void PrintDiagnosis();
    void PrintResult();
    [[nodiscard]] Report MakeReport(const char* outcome) const;
    void DescribeCodes(Report& report) const;
    void DescribeTransfer(Report& report) const;
    [[nodiscard]] std::string ReportText(const char* outcome);
    void WriteReport(const char* outcome);
    void ReportWrongUsage(const std::string& fault);
    // False, after printing the reason on standard error, when it can't be written.
    [[nodiscard]] bool FinishReport(int exitCode);

    const WaveformArguments& m_arguments;
    Console& m_console;
    const LaneWork* m_lane;
    SystemClock m_clock;
    std::uint64_t m_startMs;
    CancelKey m_cancelKey;
    ProgressLines m_progress;
    TerminalMessageBoxes m_messageBoxes;
    TerminalScreen m_screen;
    NoFileDialogs m_fileDialogs;
    ImportedFiles m_files;
    // Null where the dialog's own readers take the files.
    std::unique_ptr<WaveformImport> m_import;
    TransferMeter m_meter;
    std::unique_ptr<InstrumentLink> m_link;
    std::shared_ptr<RecordingServer> m_recording;
    waveform::frmDataTransfer m_dialog;
    bool m_reportIsWritable = false;
    // Of a download.
    std::optional<DownloadDestination> m_destination;
    // Once the waveform is playing.
    std::optional<PlayOutcome> m_played;
    std::string m_model;
    std::string m_error;
};

}  // namespace krv::cli
