// krv info: the figures of a file, or of a waveform that an instrument holds.
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/ImportReport.h"
#include "cli/ImportSource.h"
#include "cli/InstrumentLink.h"
#include "cli/JsonOutput.h"
#include "cli/StoredCodes.h"
#include "cli/WaveformFigures.h"
#include "common/Hexadecimal.h"
#include "plots/FigureText.h"
#include "preview/CodeSignal.h"

namespace krv::cli {
namespace {

std::string ChecksumOf(const ports::StoredArray& array) {
    return Hexadecimal(array.crc32, 8, HexLetters::Small);
}

// The figures of what an instrument holds, where it sends that back.
struct StoredFigures {
    ports::StoredWaveform stored;
    std::optional<analysis::Figures> figures;
};

StoredFigures Ask(const InfoArguments& arguments) {
    InstrumentLink link(arguments.connection);
    StoredFigures found{link.Server()->Readback()->ReadBack(arguments.source), std::nullopt};
    suite::ScpiInstrument& instrument = *link.Server()->ScpiAccess();
    if (found.stored.codes.count > 0 && instrument.SendsCodes(arguments.source)) {
        analysis::Signal signal =
            preview::SignalOfCodes(FetchCodes(instrument, arguments.source, found.stored));
        signal.sampleRate = SampleClockOf(instrument);
        found.figures = analysis::FiguresOf(signal);
    }
    link.Finish();
    return found;
}

// What an instrument holds is measured as it is.
void RequireNoImport(const ImportArguments& import) {
    if (SaysHowToImport(import)) {
        throw UsageError(
            "--raw, --range, --resample-to and --normalize are for files: without them, "
            "krv info tells of all that the instrument holds.");
    }
}

void TellOfStored(const InfoArguments& arguments, Console& console) {
    const auto [stored, figures] = Ask(arguments);
    const std::pair<const char*, const ports::StoredArray*> arrays[] = {
        {"codes", &stored.codes}, {"qCodes", &stored.qCodes}, {"markers", &stored.markers}};
    if (arguments.json) {
        OutputJson json{{"name", arguments.source}};
        for (const auto& [name, array] : arrays) {
            json[name] = {{"count", array->count}, {"crc32", ChecksumOf(*array)}};
        }
        json["figures"] = figures ? FiguresJson(*figures) : OutputJson(nullptr);
        PrintJson(json, console.out);
        return;
    }
    const char* const labels[] = {"I codes:      ", "Q codes:      ", "Markers:      "};
    for (std::size_t k = 0; k < std::size(arrays); ++k) {
        console.out << labels[k] << arrays[k].second->count << ", CRC-32 "
                    << ChecksumOf(*arrays[k].second) << '\n';
    }
    console.out << (figures ? plots::FiguresAsText(*figures)
                            : "Figures:      none, the instrument doesn't send its codes back\n");
}

void TellOfFile(const InfoArguments& arguments, Console& console) {
    ImportedFiles files;
    const SourceName source = SplitSource(arguments.source, files);
    const formats::SharedWaveform waveform = ReadToShow(source, arguments.import, console, files);
    const analysis::Figures figures = analysis::FiguresOf(SignalOf(waveform));
    if (arguments.json) {
        PrintJson({{"source", arguments.source},
                   {"import", ImportJson(ReportOf(*waveform))},
                   {"figures", FiguresJson(figures)}},
                  console.out);
        return;
    }
    PrintImport(*waveform, console.out, console.err);
    console.out << plots::FiguresAsText(figures);
}

}  // namespace

int RunInfo(const InfoArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    if (arguments.connection.address) {
        RequireNoImport(arguments.import);
        TellOfStored(arguments, console);
    } else {
        TellOfFile(arguments, console);
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
