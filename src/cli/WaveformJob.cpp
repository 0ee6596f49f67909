#include "cli/WaveformJob.h"

#include <array>
#include <exception>
#include <new>
#include <ostream>
#include <utility>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/FormFilling.h"
#include "cli/Messages.h"
#include "cli/OfflineServer.h"
#include "cli/Summary.h"
#include "cli/TextDiagnosis.h"
#include "common/Crc32.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "suite/scpi/ScpiInstrument.h"

namespace krv::cli {
namespace {

// A run's record holds -1 for what was not reached.
template <class T>
std::optional<T> Known(T value) {
    return value >= 0 ? std::optional(value) : std::nullopt;
}

}  // namespace

WaveformJob::WaveformJob(const WaveformArguments& arguments, Console& console, const LaneWork* lane)
    : m_arguments(arguments),
      m_console(console),
      m_lane(lane),
      m_startMs(m_clock.TickCountMs()),
      m_cancelKey(console.interruptions),
      m_progress(console.progress, console.progressWidth),
      m_messageBoxes(console, m_progress, arguments.answerYes),
      m_screen(m_cancelKey, m_progress),
      m_meter(m_clock),
      m_dialog(ports::Desktop{m_screen, m_messageBoxes, m_fileDialogs, m_screen, m_clock, m_files,
                              console.numberFormat}) {
    if (lane != nullptr) {
        m_progress.ShowIn(*lane->row);
    }
    m_progress.WriteTo(console.err, m_clock, console.progressIntervalMs);
    m_meter.OnChange([this](const std::string& text) { m_screen.ShowNote(text); });
}

void WaveformJob::Prepare() {
    try {
        FillForm();
    } catch (const UsageError& error) {
        ReportWrongUsage(error.what());
        throw;
    }
    ProtectFiles();
}

int WaveformJob::Run() {
    bool succeeded = false;
    try {
        if (m_arguments.reportFile && m_lane == nullptr) {
            // Should this program end from outside, nothing tells of an earlier run. What goes to a
            // device or pipe stays there, and is written once.
            if (!IsDeviceOrPipe(PathOf(*m_arguments.reportFile))) {
                WriteReport("unfinished");
            }
            m_reportIsWritable = true;
        }
        RequireFoundQ();
        Connect();
        succeeded = TakeDestination() && !m_cancelKey.Pressed() && Import() && RunDialog();
        PrintDiagnosis();
        if (succeeded) {
            Complete();
        }
        if (m_link) {
            m_link->Finish();
        }
    } catch (const Error& error) {
        succeeded = false;
        if (!error.IsCancel()) {
            PrintError(error.Description());
        }
    } catch (const std::bad_alloc&) {
        succeeded = false;
        PrintError("Out of memory.");
    }
    const bool isCancelled =
        m_cancelKey.Pressed() || (m_error.empty() && m_messageBoxes.EndWithNo());
    int exitCode = isCancelled ? ExitCode::Cancelled : ExitCode::Failed;
    if (succeeded) {
        exitCode = ExitCode::Done;
        PrintResult();
    }
    return FinishReport(exitCode) ? exitCode : ExitCode::Failed;
}

void WaveformJob::FillForm() {
    m_import = WaveformImport::For(m_arguments, m_console, m_files);
    m_dialog.Load();
    FormFilling(m_screen, m_dialog).Fill(m_import ? m_import->FirstEntries() : m_arguments);
}

bool WaveformJob::Import() {
    if (!m_import) {
        return true;
    }
    try {
        if (m_lane != nullptr) {
            m_import->TakeFrom(*m_lane->import);
        } else {
            m_import->Read([this] {
                if (m_cancelKey.Pressed()) {
                    throw CancelError();
                }
            });
        }
    } catch (const Error& error) {
        if (error.IsCancel()) {
            return false;
        }
        throw;
    }
    FormFilling(m_screen, m_dialog).Fill(m_import->EntriesFor(m_model));
    return true;
}

// No file that is written may be one that is read, or another one that is written.
void WaveformJob::ProtectFiles() const {
    const auto fileIn = [](const std::string& box) { return std::string(PathIn(box)); };
    std::vector<NamedFile> known{{"--i", fileIn(m_dialog.TextIFileName.Text)},
                                 {"--q", fileIn(m_dialog.TextQFileName.Text)},
                                 {"--marker-file", fileIn(m_dialog.TextMarker.Text)}};
    const auto add = [&known](const char* option, const std::string& file) {
        RequireOtherFiles({option, file}, known);
        known.push_back({option, file});
    };
    if (m_arguments.command == WaveformCommand::Convert) {
        for (const char* name : {"i.int16", "q.int16", "markers.int16"}) {
            add("--output", OutputFile(name));
        }
    }
    if (m_arguments.reportFile) {
        add("--report", *m_arguments.reportFile);
    }
    if (m_arguments.connection.logFile) {
        add("--log", *m_arguments.connection.logFile);
    }
}

void WaveformJob::RequireFoundQ() const {
    if (m_arguments.findQ && m_dialog.TextQFileName.Text.Get().empty()) {
        throw Error(ErrorNumber::FileNotFound,
                    "--find-q finds no Q file: no other file has the name of " + m_arguments.iFile +
                        " with a letter I replaced by Q.");
    }
}

void WaveformJob::Connect() {
    std::shared_ptr<ports::InstrumentServer> server;
    if (m_arguments.command == WaveformCommand::Convert) {
        server = std::make_shared<OfflineServer>(m_arguments.model);
    } else {
        m_link = std::make_unique<InstrumentLink>(m_arguments.connection, &m_meter, &m_cancelKey,
                                                  m_lane == nullptr ? nullptr : m_lane->log);
        server = m_recording = std::make_shared<RecordingServer>(
            m_link->Server(), m_meter, m_arguments.json || m_arguments.reportFile);
        if (m_arguments.verify) {
            m_dialog.VerifyWith = m_link->Server()->Readback();
        }
    }
    m_dialog.instrServer = std::move(server);
    m_model = TrimBlanks(m_dialog.instrServer->Instrument()->Model());
}

bool WaveformJob::TakeDestination() {
    const std::string name(TrimBlanks(m_dialog.TextDestinationName.Text.Get()));
    if (m_arguments.command != WaveformCommand::Download || name.empty()) {
        return true;
    }
    m_destination.emplace(m_link->Server()->ScpiAccess(), name);
    m_destination->RequireFree(m_arguments.play);
    m_recording->SetDestination(m_destination->ForSending(m_arguments.play));
    // A script that downloads again means to replace: nobody is there to ask.
    const bool asks = m_console.canAsk && !m_cancelKey.Pressed() && !m_arguments.replace &&
                      !m_arguments.answerYes;
    return !asks || !m_destination->IsTaken() ||
           m_messageBoxes.Show({m_destination->Question(), "krv download", ports::MessageIcon::None,
                                ports::MessageButtons::YesNo}) == ports::MessageAnswer::Yes;
}

bool WaveformJob::RunDialog() {
    if (m_arguments.command == WaveformCommand::Convert) {
        return m_dialog.StartConversion();
    }
    m_dialog.ShowModeless();
    const bool download = m_arguments.command == WaveformCommand::Download;
    return m_screen.Click(download ? m_dialog.cmdDownload : m_dialog.CommandValidate) &&
           m_dialog.RunSucceeded;
}

void WaveformJob::Complete() {
    if (m_arguments.command == WaveformCommand::Convert) {
        WriteOutput();
    }
    if (m_arguments.play && m_destination) {
        m_played = m_destination->Play();
    }
}

std::string WaveformJob::OutputFile(const char* name) const {
    const auto path = (PathOf(m_arguments.outputFolder) / name).generic_u8string();
    return {path.begin(), path.end()};
}

void WaveformJob::WriteOutput() {
    const waveform::DacCodes& codes = m_dialog.Codes;
    MakeFolder(m_arguments.outputFolder);
    if (m_dialog.UseQData) {
        WriteCodes(OutputFile("q.int16"), codes.q.Span());
    } else {
        // What an earlier conversion left there would pass for this one's.
        RemoveFile(OutputFile("q.int16"));
    }
    WriteCodes(OutputFile("i.int16"), codes.i.Span());
    WriteCodes(OutputFile("markers.int16"), codes.markers.Span());
}

void WaveformJob::PrintError(const std::string& description) {
    m_progress.Erase();
    m_error = description;
    PrintFailure(m_console.err, description);
}

void WaveformJob::PrintDiagnosis() {
    const std::string& file = m_dialog.LastRun.unreadFile;
    if (file.empty()) {
        return;
    }
    if (const std::string finding = DiagnoseText(file, m_console.numberFormat); !finding.empty()) {
        PrintFailure(m_console.err, finding);
    }
}

void WaveformJob::PrintResult() {
    const bool hasReplaced = m_destination && m_destination->IsTaken();
    const FinishedRun run{m_arguments,         m_dialog, m_model, hasReplaced,
                          m_import != nullptr, m_played};
    for (const std::string& warning : WarningsOf(run)) {
        PrintWarning(m_console.err, warning);
    }
    // Of several jobs one tells for all.
    if (m_import && m_lane == nullptr) {
        PrintImport(*m_import->Waveform(), m_console.out, m_console.err);
    }
    PrintSummary(run, m_console.out);
}

Report WaveformJob::MakeReport(const char* outcome) const {
    static constexpr std::array<const char*, 3> Commands{"check", "download", "convert"};
    Report report;
    report.command = Commands.at(static_cast<std::size_t>(m_arguments.command));
    report.outcome = outcome;
    report.error = m_error;
    report.model = m_model;
    report.iFile = m_dialog.TextIFileName.Text;
    if (!m_dialog.TextQFileName.Text.Get().empty()) {
        report.qFile = m_dialog.TextQFileName.Text.Get();
    }
    if (m_dialog.chkMarkerSource.Value) {
        report.markerFile = m_dialog.TextMarker.Text.Get();
    }
    if (m_import && m_import->Waveform() != nullptr) {
        report.import = ReportOf(*m_import->Waveform());
    }
    if (m_dialog.LastRun.convertMs >= 0) {
        DescribeCodes(report);
    }
    DescribeTransfer(report);
    report.messages = m_messageBoxes.Shown();
    return report;
}

void WaveformJob::DescribeCodes(Report& report) const {
    const auto summaryOf = [](const waveform::SharedCodes& codes) {
        return CodesSummary{codes.Size(), CodesCrc32(codes.Span())};
    };
    const waveform::DacCodes& codes = m_dialog.Codes;
    report.i = summaryOf(codes.i);
    if (m_dialog.UseQData) {
        report.q = summaryOf(codes.q);
    }
    report.markers = summaryOf(codes.markers);
    report.smallestCode = codes.smallest;
    report.largestCode = codes.largest;
}

void WaveformJob::DescribeTransfer(Report& report) const {
    const waveform::RunRecord& run = m_dialog.LastRun;
    report.destination = run.destinationName;
    report.transferred = run.transferred;
    report.verified = run.verified;
    report.isPlaying = m_played.has_value();
    report.instrumentErrors = run.instrumentErrors;
    report.estimatedSeconds = Known(run.estimatedSeconds);
    report.readMs = Known(run.readMs);
    report.convertMs = Known(run.convertMs);
    report.transferMs = Known(run.transferMs);
    if (m_recording) {
        report.sent = m_recording->Sent();
    }
}

std::string WaveformJob::ReportText(const char* outcome) {
    Report report = MakeReport(outcome);
    report.totalMs = m_clock.TickCountMs() - m_startMs;
    return ReportJson(report);
}

std::string WaveformJob::ReportText(int exitCode) {
    return ReportText(exitCode == ExitCode::Done        ? "done"
                      : exitCode == ExitCode::Cancelled ? "cancelled"
                                                        : "failed");
}

void WaveformJob::WriteReport(const char* outcome) {
    WriteText(*m_arguments.reportFile, ReportText(outcome));
}

// It isn't known yet which files the run would have read: of what is there, only an earlier run's
// report is certainly none of them.
void WaveformJob::ReportWrongUsage(const std::string& fault) {
    if (m_arguments.reportFile && m_lane == nullptr && MayBecomeReport(*m_arguments.reportFile)) {
        m_error = fault;
        TrapErrors([&] { WriteReport("failed"); });
    }
}

bool WaveformJob::FinishReport(int exitCode) {
    if (!m_reportIsWritable) {
        return true;
    }
    try {
        WriteText(*m_arguments.reportFile, ReportText(exitCode));
    } catch (const Error& error) {
        PrintError(error.Description());
        return false;
    }
    return true;
}

}  // namespace krv::cli
