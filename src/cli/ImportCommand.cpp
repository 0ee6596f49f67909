// krv import: files of other programs into files that the download dialog reads.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/ImportReport.h"
#include "cli/ImportSource.h"
#include "common/Error.h"
#include "common/Numbers.h"
#include "formats/ProductFiles.h"
#include "formats/SampleChanges.h"
#include "waveform/data/DownloadPlan.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {
namespace {

using formats::ProductChannel;
using formats::ProductValues;

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
          m_source(SplitSource(arguments.file, m_files)),
          m_options(ReadImportOptions(arguments.import)),
          m_scale(ReadScale(arguments)) {
        m_options.columns = m_source.columns;
        RequireText();
    }

    void Run() {
        TakeStandardInput(m_source.file, m_console, m_files);
        auto waveform = std::make_shared<formats::ImportedWaveform>(
            formats::Import({m_files, m_source.file}, m_options, [] {}));
        Scale(*waveform);
        m_waveform = std::move(waveform);
        MakeOutputs();
        ProtectFiles();
        MakeFolder(m_arguments.outputFolder);
        PrintImport(*m_waveform, m_console);
        for (const Output& output : m_outputs) {
            Write(output);
        }
        if (m_arguments.reportFile) {
            WriteText(*m_arguments.reportFile, Report());
        }
    }

 private:
    static std::optional<double> ReadScale(const ImportFileArguments& arguments) {
        if (arguments.import.normalize && arguments.scale) {
            throw UsageError("--normalize is the same as --scale 100: give one of them.");
        }
        if (!arguments.scale) {
            return arguments.import.normalize ? std::optional(100.0) : std::nullopt;
        }
        const ParsedNumber percent = ParseNumber(*arguments.scale);
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

    void Scale(formats::ImportedWaveform& waveform) const {
        if (!m_scale) {
            return;
        }
        if (waveform.peak == 0) {
            throw Error(ErrorNumber::InvalidFileFormat,
                        m_source.file + ": It can't be scaled: all values are zero.");
        }
        const double factor = *m_scale / 100 * waveform.fullScale / waveform.peak;
        waveform.i = formats::Multiplied(waveform.i, factor);
        waveform.q = formats::Multiplied(waveform.q, factor);
        waveform.peak = std::abs(factor) * waveform.peak;
        waveform.isInteger = false;
        // What rounding adds is none of the waveform's.
        waveform.peak = std::min(waveform.peak, waveform.fullScale);
        waveform.done.push_back("Scaled by " + NumberToText(factor) + ": the peak is at " +
                                NumberToText(*m_scale) + " % of full scale.");
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
                {"Marker", formats::NumbersOf(m_waveform, ProductChannel::Markers), true});
        }
    }

    [[nodiscard]] bool IsText() const {
        return m_arguments.fileType == waveform::FileTypeIndex::Ascii;
    }

    [[nodiscard]] std::string FileOf(const Output& output) const {
        const bool isStandardInput = m_source.file == StandardInputName;
        const auto stem = isStandardInput ? std::filesystem::path("stdin")
                                          : PathOf(m_source.file).filename().stem();
        auto path = PathOf(m_arguments.outputFolder) / stem;
        path += output.ending + (IsText() ? ".txt" : ".bin");
        const auto name = path.generic_u8string();
        return {name.begin(), name.end()};
    }

    // No file that is written may be the one that is read, or another one that is written.
    void ProtectFiles() const {
        std::vector<NamedFile> known{{"FILE", m_source.file}};
        for (const Output& output : m_outputs) {
            RequireOtherFiles({"--output", FileOf(output)}, known);
            known.push_back({"--output", FileOf(output)});
        }
        if (m_arguments.reportFile) {
            RequireOtherFiles({"--report", *m_arguments.reportFile}, known);
        }
    }

    void Write(const Output& output) const {
        const std::string name = FileOf(output);
        // Under its name only when it is whole.
        const std::string part = name + ".part";
        {
            std::ofstream file(PathOf(part), std::ios::binary);
            if (IsText()) {
                formats::WriteAsText(output.values, file);
            } else {
                const bool isBigEndian = m_arguments.fileType == waveform::FileTypeIndex::BigEndian;
                formats::WriteProductFile(output.areMarkers
                                              ? formats::AsMarkerBytes(output.values)
                                              : formats::AsWords(output.values, isBigEndian),
                                          file);
            }
            if (!file.flush()) {
                throw Error(ErrorNumber::PathFileAccess, "Can't write " + part + '.');
            }
        }
        std::error_code failure;
        std::filesystem::rename(PathOf(part), PathOf(name), failure);
        if (failure) {
            throw Error(ErrorNumber::PathFileAccess,
                        "Can't write " + name + ": " + failure.message());
        }
        m_console.out << "Written:      " << name << ", " << output.values.count << " values\n";
    }

    [[nodiscard]] std::string Report() const {
        nlohmann::ordered_json files = nlohmann::ordered_json::array();
        for (const Output& output : m_outputs) {
            files.push_back({{"file", FileOf(output)}, {"count", output.values.count}});
        }
        const nlohmann::ordered_json json{{"command", "import"},
                                          {"source", m_source.file},
                                          {"import", ImportJson(ReportOf(*m_waveform))},
                                          {"files", files}};
        return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + '\n';
    }

    const ImportFileArguments& m_arguments;
    Console& m_console;
    ImportedFiles m_files;
    SourceName m_source;
    formats::ImportOptions m_options;
    std::optional<double> m_scale;
    formats::SharedWaveform m_waveform;
    std::vector<Output> m_outputs;
};

}  // namespace

int RunImport(const ImportFileArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    ImportRun(arguments, console).Run();
    return ExitCode::Done;
}

}  // namespace krv::cli
