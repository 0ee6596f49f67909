// krv plot: a look at a file, as a picture or on the terminal.
#include <cstdint>
#include <memory>
#include <ostream>
#include <span>
#include <string>

#include "cli/Commands.h"
#include "cli/EndOnInterruption.h"
#include "cli/ExitCode.h"
#include "cli/Files.h"
#include "cli/ImportReport.h"
#include "cli/ImportSource.h"
#include "cli/JsonOutput.h"
#include "cli/Platform.h"
#include "cli/WaveformFigures.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "formats/Counted.h"
#include "plots/PixelCanvas.h"
#include "plots/PlotSheet.h"
#include "plots/PngFile.h"
#include "plots/SvgCanvas.h"

namespace krv::cli {
namespace {

enum class PlotKind : std::uint8_t { Svg, Png };

PlotKind KindOf(const std::string& file) {
    const std::string name = UpperCase(file);
    if (name.ends_with(".SVG")) {
        return PlotKind::Svg;
    }
    if (name.ends_with(".PNG")) {
        return PlotKind::Png;
    }
    throw UsageError("--output takes a name that ends with .svg or .png.");
}

std::string PictureOf(const plots::PlotSubject& subject, const PlotArguments& arguments,
                      PlotKind kind) {
    const plots::Theme theme = arguments.isDark ? plots::Theme::Dark : plots::Theme::Light;
    const plots::SheetContent content = plots::ContentOf(subject.signal);
    const plots::SheetView view = plots::SheetView::Of(subject.signal);
    if (kind == PlotKind::Svg) {
        plots::SvgCanvas canvas(view.width, view.height, theme);
        plots::DrawSheet(subject, content, view, canvas);
        return canvas.Take();
    }
    const int scale = arguments.isLarge ? 2 : 1;
    plots::PixelCanvas canvas(view.width * scale, view.height * scale, scale, theme);
    plots::DrawSheet(subject, content, view, canvas);
    return plots::EncodePngFile(canvas.Pixels());
}

std::string TitleOf(const std::string& source, const formats::ImportedWaveform& waveform) {
    std::string title = source + ": " + formats::Counted(waveform.Points(), "point");
    if (waveform.sampleRate) {
        title += " at " + NumberToText(*waveform.sampleRate) + " Hz";
    }
    return title;
}

}  // namespace

int RunPlot(const PlotArguments& arguments, Console& console) {
    const EndOnInterruption end(console.interruptions);
    const PlotKind kind = arguments.output ? KindOf(*arguments.output) : PlotKind::Svg;
    if (arguments.json && !arguments.output) {
        throw UsageError("--json goes with --output: without it the plot is text.");
    }
    ImportedFiles files;
    const SourceName source = SplitSource(arguments.source, files);
    if (arguments.output) {
        const NamedFile read[] = {{"FILE", source.file}};
        RequireOtherFiles({"--output", *arguments.output}, read);
    }
    const formats::SharedWaveform waveform = ReadToShow(source, arguments.import, console, files);
    const analysis::Signal signal = SignalOf(waveform);
    const plots::PlotSubject subject{signal, waveform->markers.Span(),
                                     TitleOf(arguments.source, *waveform)};
    CommandOutput output(console.out, arguments.json);
    PrintImport(*waveform, output.Text(), console.err);
    if (arguments.output) {
        WriteText(*arguments.output, PictureOf(subject, arguments, kind));
        output.Text() << "Written:      " << *arguments.output << '\n';
        output["source"] = arguments.source;
        output["import"] = ImportJson(ReportOf(*waveform));
        output["output"] = *arguments.output;
        output.Finish();
    } else {
        const bool hasBraille = !arguments.isAscii && TakesUtf8();
        console.out << plots::SheetAsText(subject, console.progressWidth, hasBraille);
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
