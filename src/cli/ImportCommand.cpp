// krv import: files of other programs into files that the download dialog reads.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/ImportReport.h"
#include "cli/ImportSource.h"
#include "cli/JsonOutput.h"
#include "common/ErrorTrap.h"
#include "common/Numbers.h"
#include "formats/Counted.h"
#include "formats/ProductFiles.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {
namespace {

using formats::ProductChannel;
using formats::ProductValues;

constexpr const char* MarkerEnding = "Marker";

// A file to write: the end of its name, its values, and whether these are markers.
struct Output {
    std::string ending;
    ProductValues values;
    bool areMarkers = false;
};

class ImportRun {
 public:
    ImportRun(const ImportFileArguments& arguments, Console& console)
        : m_arguments(arguments),
          m_console(console),
          m_output(console.out, arguments.json),
          m_source(SplitSource(arguments.file, m_files)) {}

    void Run() {
        ProtectFiles();
        // Should this end before its time, nothing tells of an earlier run. The report may belong
        // into the new folder; that this can't be made is told later.
        TrapErrors([&] { MakeFolder(m_arguments.outputFolder); });
        if (m_arguments.reportFile && !IsDeviceOrPipe(PathOf(*m_arguments.reportFile))) {
            WriteReport("unfinished", {});
        }
        try {
            Import();
        } catch (const UsageError& error) {
            TrapErrors([&] { WriteReport("failed", error.what()); });
            throw;
        } catch (const std::exception& error) {
            Describe("failed", error.what());
            m_output.Finish();
            TrapErrors([&] { WriteReport("failed", error.what()); });
            throw;
        }
        WriteReport("done", {});
        m_output.Finish();
    }

 private:
    void Import() {
        RequireText();
        formats::ImportOptions options =
            ReadImportOptions(m_arguments.import, m_console.numberFormat);
        options.columns = m_source.columns;
        options.peakPercent = ReadScale();
        TakeStandardInput(m_source.file, m_console, m_files);
        m_waveform = std::make_shared<const formats::ImportedWaveform>(
            formats::Import(m_files.Input(m_source.file), options, [] {}));
        MakeOutputs();
        MakeFolder(m_arguments.outputFolder);
        PrintImport(*m_waveform, m_output.Text(), m_console.err);
        for (; m_written < m_outputs.size(); ++m_written) {
            Write(m_outputs[m_written]);
        }
    }

    [[nodiscard]] std::optional<double> ReadScale() const {
        const bool normalizes = m_arguments.import.normalize;
        if (normalizes && m_arguments.scale) {
            throw UsageError("--normalize is the same as --scale 100: give one of them.");
        }
        if (!m_arguments.scale) {
            return normalizes ? std::optional(100.0) : std::nullopt;
        }
        const ParsedNumber percent = ParseNumber(*m_arguments.scale, m_console.numberFormat);
        if (percent.error != NumberTextError::None) {
            throw UsageError(waveform::ScaleFactor::NotNumeric);
        }
        if (std::abs(percent.value) > waveform::ScaleFactor::LargestMagnitude) {
            throw UsageError(waveform::ScaleFactor::TooLarge);
        }
        return percent.value;
    }

    void RequireText() const {
        if (m_arguments.fileType != waveform::FileTypeIndex::Ascii &&
            m_arguments.waveformType == waveform::WaveformTypeIndex::Scalable) {
            throw UsageError("--file-type other than ascii goes with --type 14-bit or 16-bit.");
        }
    }

    void MakeOutputs() {
        switch (m_arguments.waveformType) {
            case waveform::WaveformTypeIndex::Internal16:
                m_outputs.push_back({"", formats::Codes16Of(m_waveform)});
                break;
            case waveform::WaveformTypeIndex::Internal14:
                m_outputs.push_back({"I", formats::Codes14Of(m_waveform, ProductChannel::I)});
                m_outputs.push_back({"Q", formats::Codes14Of(m_waveform, ProductChannel::Q)});
                break;
            default:
                m_outputs.push_back({"I", formats::NumbersOf(m_waveform, ProductChannel::I)});
                m_outputs.push_back({"Q", formats::NumbersOf(m_waveform, ProductChannel::Q)});
        }
        if (m_waveform->markers.Size() > 0) {
            m_outputs.push_back(
                {MarkerEnding, formats::NumbersOf(m_waveform, ProductChannel::Markers), true});
        }
    }

    [[nodiscard]] bool IsText() const {
        return m_arguments.fileType == waveform::FileTypeIndex::Ascii;
    }

    [[nodiscard]] std::string FileOf(const std::string& ending) const {
        const bool isStandardInput = m_source.file == StandardInputName;
        const auto stem = isStandardInput ? std::filesystem::path("stdin")
                                          : PathOf(m_source.file).filename().stem();
        auto path = PathOf(m_arguments.outputFolder) / stem;
        path += ending + (IsText() ? ".txt" : ".bin");
        const auto name = path.generic_u8string();
        return {name.begin(), name.end()};
    }

    // No file that may be written may be the one that is read, or another one that is written.
    void ProtectFiles() const {
        std::vector<NamedFile> known{{"FILE", m_source.file}};
        const bool isOneFile = m_arguments.waveformType == waveform::WaveformTypeIndex::Internal16;
        for (const char* ending : {isOneFile ? "" : "I", "Q", MarkerEnding}) {
            RequireOtherFiles({"--output", FileOf(ending)}, known);
            known.push_back({"--output", FileOf(ending)});
        }
        if (m_arguments.reportFile) {
            RequireOtherFiles({"--report", *m_arguments.reportFile}, known);
        }
    }

    void Write(const Output& output) {
        const std::string name = FileOf(output.ending);
        WriteWhole(name, [&](std::ostream& file) {
            if (IsText()) {
                formats::WriteAsText(output.values, file);
                return;
            }
            const bool isBigEndian = m_arguments.fileType == waveform::FileTypeIndex::BigEndian;
            formats::WriteProductFile(output.areMarkers
                                          ? formats::AsMarkerBytes(output.values)
                                          : formats::AsWords(output.values, isBigEndian),
                                      file);
        });
        m_output.Text() << "Written:      " << name << ", "
                        << formats::Counted(output.values.count, "value") << '\n';
    }

    void Describe(const char* outcome, const std::string& error) {
        OutputJson files = OutputJson::array();
        for (const Output& output : std::span(m_outputs).first(m_written)) {
            files.push_back({{"file", FileOf(output.ending)}, {"count", output.values.count}});
        }
        m_output["command"] = "import";
        m_output["outcome"] = outcome;
        m_output["error"] = TextOrNull(error);
        m_output["source"] = m_source.file;
        m_output["import"] =
            m_waveform != nullptr ? ImportJson(ReportOf(*m_waveform)) : OutputJson(nullptr);
        m_output["files"] = files;
    }

    void WriteReport(const char* outcome, const std::string& error) {
        Describe(outcome, error);
        if (m_arguments.reportFile) {
            WriteText(*m_arguments.reportFile, m_output.JsonText());
        }
    }

    const ImportFileArguments& m_arguments;
    Console& m_console;
    CommandOutput m_output;
    ImportedFiles m_files;
    SourceName m_source;
    formats::SharedWaveform m_waveform;
    std::vector<Output> m_outputs;
    // So many of them are there.
    std::size_t m_written = 0;
};

}  // namespace

int RunImport(const ImportFileArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    ImportRun(arguments, console).Run();
    return ExitCode::Done;
}

}  // namespace krv::cli
