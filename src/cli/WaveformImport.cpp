#include "cli/WaveformImport.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "cli/ExitCode.h"
#include "common/Error.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "formats/Counted.h"
#include "formats/Fault.h"
#include "waveform/data/ModelFamily.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::cli {
namespace {

using formats::ImportedWaveform;
using formats::ProductChannel;

bool SaysWhatValuesAre(const WaveformArguments& arguments) {
    return arguments.fileType != waveform::FileTypeIndex::Ascii ||
           arguments.waveformType != waveform::WaveformTypeIndex::Scalable;
}

// With what an import can't be together, or nothing.
std::string Clash(const WaveformArguments& arguments) {
    const char* const option = SaysWhatValuesAre(arguments) ? "--type and --file-type"
                               : arguments.findQ            ? "--find-q"
                               : arguments.findMarker       ? "--find-marker"
                                                            : nullptr;
    const bool hasTwoScales = arguments.import.normalize && arguments.scale;
    if (hasTwoScales) {
        return "--normalize is the same as --scale 100: give one of them.";
    }
    return option == nullptr ? std::string()
                             : std::string(option) + " can't be used with " + arguments.iFile +
                                   ", which is imported: its content tells what it holds. Name its "
                                   "columns of I, Q and markers as in FILE:1,2,3, or other files "
                                   "with --q and --marker-file.";
}

// A number of points in a text box of the dialog; nothing where the dialog has to complain of it.
std::optional<std::size_t> PointCount(const std::optional<std::string>& text, NumberFormat format) {
    if (!text) {
        return 0;
    }
    const ParsedNumber number = ParseNumber(TrimBlanks(*text), format);
    const double rounded = RoundHalfEven(number.value);
    const bool isCount =
        number.error == NumberTextError::None && rounded >= 0 && rounded <= INT16_MAX;
    return isCount ? std::optional(static_cast<std::size_t>(rounded)) : std::nullopt;
}

// What is said of both files is said once.
void TakeWarnings(ImportedWaveform& waveform, const ImportedWaveform& other) {
    for (const std::string& warning : other.warnings) {
        if (std::ranges::find(waveform.warnings, warning) == waveform.warnings.end()) {
            waveform.warnings.push_back(warning);
        }
    }
}

}  // namespace

std::unique_ptr<WaveformImport> WaveformImport::For(const WaveformArguments& arguments,
                                                    Console& console, ImportedFiles& files) {
    std::unique_ptr<WaveformImport> import(new WaveformImport(arguments, console, files));
    const SourceName& source = import->m_source;
    const bool isTold = SaysHowToImport(arguments.import) || !source.columns.empty() ||
                        source.file == StandardInputName;
    if (!isTold && (SaysWhatValuesAre(arguments) || !IsForImport(source.file, files))) {
        return nullptr;
    }
    if (const std::string clash = Clash(arguments); !clash.empty()) {
        throw UsageError(clash);
    }
    return import;
}

WaveformImport::WaveformImport(const WaveformArguments& arguments, Console& console,
                               ImportedFiles& files)
    : m_arguments(arguments),
      m_console(console),
      m_files(files),
      m_source(SplitSource(arguments.iFile, files)),
      m_options(ReadImportOptions(arguments.import, console.numberFormat)) {}

std::string WaveformImport::IName() const {
    return m_source.file == StandardInputName ? "stdin" : m_source.file;
}

WaveformArguments WaveformImport::FirstEntries() const {
    WaveformArguments entries = m_arguments;
    entries.iFile = IName();
    if (entries.qFile) {
        entries.qFile = SplitSource(*entries.qFile, m_files).file;
    }
    if (entries.markerFile) {
        entries.markerFile = SplitSource(*entries.markerFile, m_files).file;
    }
    return entries;
}

ImportedWaveform WaveformImport::ReadSource(const std::string& text,
                                            const std::function<void()>& lookUp) {
    const SourceName source = SplitSource(text, m_files);
    TakeStandardInput(source.file, m_console, m_files);
    formats::ImportOptions options = m_options;
    options.columns = source.columns;
    return formats::Import(m_files.Input(source.file), options, lookUp);
}

void WaveformImport::Read(const std::function<void()>& lookUp) {
    auto waveform = std::make_shared<ImportedWaveform>(ReadSource(m_arguments.iFile, lookUp));
    if (m_arguments.qFile) {
        TakeQ(*waveform, lookUp);
    } else if (!waveform->HasQ()) {
        waveform->done.emplace_back("There is no Q: its values are zeros.");
    }
    if (m_arguments.markerFile) {
        TakeMarkerFile(*waveform, lookUp);
    }
    TakePulse(*waveform);
    m_waveform = std::move(waveform);
}

void WaveformImport::TakeFrom(const WaveformImport& other) {
    m_waveform = other.m_waveform;
    m_pulseIsTaken = other.m_pulseIsTaken;
}

void WaveformImport::TakeQ(ImportedWaveform& waveform, const std::function<void()>& lookUp) {
    ImportedWaveform q = ReadSource(*m_arguments.qFile, lookUp);
    if (waveform.HasQ() || q.HasQ()) {
        throw formats::FileFault(waveform.HasQ() ? m_source.file : *m_arguments.qFile,
                                 "It holds two columns. Name the one that is meant, as in FILE:1.");
    }
    if (q.Points() != waveform.Points() || q.fullScale != waveform.fullScale) {
        throw formats::FileFault(
            *m_arguments.qFile, "It holds " + formats::Counted(q.Points(), "point") +
                                    " with a full scale of " + NumberToText(q.fullScale) +
                                    ", the I file " + std::to_string(waveform.Points()) + " with " +
                                    NumberToText(waveform.fullScale) + '.');
    }
    TakeWarnings(waveform, q);
    waveform.q = std::move(q.i);
    waveform.peak = std::max(waveform.peak, q.peak);
    waveform.done.push_back("Q from " + *m_arguments.qFile + ": " + q.format + '.');
}

void WaveformImport::TakeMarkerFile(ImportedWaveform& waveform,
                                    const std::function<void()>& lookUp) {
    const ImportedWaveform markers = ReadSource(*m_arguments.markerFile, lookUp);
    TakeWarnings(waveform, markers);
    waveform.markers.Reset(markers.Points());
    waveform.markers.Resize(markers.Points());
    for (std::size_t at = 0; at < markers.Points(); ++at) {
        const double value = markers.i[at];
        if (!(value >= 0 && value <= 15) || value != RoundHalfEven(value)) {
            throw formats::FileFault(
                *m_arguments.markerFile + ", point " + std::to_string(at),
                "The marker is " + NumberToText(value) + ", not an integer from 0 to 15.");
        }
        waveform.markers[at] = static_cast<std::uint8_t>(value);
    }
    waveform.done.push_back("Markers from " + *m_arguments.markerFile + ": " + markers.format +
                            '.');
}

// In the dialog the pulse counts the values of an interleaved file; here it counts points.
void WaveformImport::TakePulse(ImportedWaveform& waveform) {
    const auto start = PointCount(m_arguments.markerStart, m_console.numberFormat);
    const auto length = PointCount(m_arguments.markerLength, m_console.numberFormat);
    const std::size_t points = waveform.Points();
    if (!start || !length || *length == 0 || *start + *length > points) {
        return;
    }
    if (waveform.markers.Size() > 0) {
        waveform.done.emplace_back("The marker pulse takes the place of the file's own markers.");
    }
    waveform.markers.Reset(points);
    waveform.markers.Resize(points);
    std::ranges::fill(waveform.markers.Span(), std::uint8_t{0});
    std::ranges::fill(waveform.markers.Span().subspan(*start, *length), std::uint8_t{1});
    m_pulseIsTaken = true;
}

WaveformArguments WaveformImport::EntriesFor(const std::string& model) {
    WaveformArguments entries = FirstEntries();
    entries.markerFile.reset();
    entries.qFile.reset();
    if (m_pulseIsTaken) {
        entries.markerStart.reset();
        entries.markerLength.reset();
    }
    if (m_waveform->markers.Size() > 0) {
        entries.markerFile = IName() + "#markers";
    }
    if (m_arguments.scale || m_arguments.import.normalize) {
        PutNumbers(entries);
    } else if (waveform::IsNewModelName(model)) {
        PutCodes16(entries);
    } else {
        PutCodes14(entries);
    }
    return entries;
}

void WaveformImport::PutCodes16(WaveformArguments& entries) {
    entries.fileType = waveform::FileTypeIndex::LittleEndian;
    entries.waveformType = waveform::WaveformTypeIndex::Internal16;
    m_files.Put(entries.iFile, formats::AsWords(formats::Codes16Of(m_waveform), false));
    if (entries.markerFile) {
        m_files.Put(*entries.markerFile, formats::AsMarkerBytes(formats::NumbersOf(
                                             m_waveform, ProductChannel::Markers)));
    }
}

void WaveformImport::PutCodes14(WaveformArguments& entries) {
    entries.fileType = waveform::FileTypeIndex::LittleEndian;
    entries.waveformType = waveform::WaveformTypeIndex::Internal14;
    entries.qFile = IName() + "#Q";
    m_files.Put(entries.iFile,
                formats::AsWords(formats::Codes14Of(m_waveform, ProductChannel::I), false));
    m_files.Put(*entries.qFile,
                formats::AsWords(formats::Codes14Of(m_waveform, ProductChannel::Q), false));
    if (entries.markerFile) {
        m_files.Put(*entries.markerFile, formats::AsMarkerBytes(formats::NumbersOf(
                                             m_waveform, ProductChannel::Markers)));
    }
}

void WaveformImport::PutNumbers(WaveformArguments& entries) {
    entries.scale = m_arguments.import.normalize ? std::string("100") : m_arguments.scale;
    entries.qFile = IName() + "#Q";
    const auto put = [&](const std::string& name, ProductChannel channel) {
        m_files.Put(name, formats::AsPaddedText(formats::NumbersOf(m_waveform, channel)));
    };
    put(entries.iFile, ProductChannel::I);
    put(*entries.qFile, ProductChannel::Q);
    if (entries.markerFile) {
        put(*entries.markerFile, ProductChannel::Markers);
    }
}

}  // namespace krv::cli
