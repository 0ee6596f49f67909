// The readers of other programs' files and the plots: a table of two columns against the product's
// own reader of the same numbers, the plot of a long recording against reading it, and the preview.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

#include "benchmarks/Contest.h"
#include "benchmarks/Reading.h"
#include "cli/WaveformFigures.h"
#include "common/files/StandardFiles.h"
#include "formats/Import.h"
#include "plots/PixelCanvas.h"
#include "plots/PlotSheet.h"
#include "plots/PngFile.h"
#include "preview/WaveformView.h"
#include "tests/support/TemporaryFolder.h"
#include "waveform/readers/AsciiDataFile.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t TableValues = 10'000'000;
constexpr std::size_t PlotPoints = std::size_t{64} << 20;

std::shared_ptr<const formats::ImportedWaveform> ImportAll(files::StandardFiles& files,
                                                           const std::string& path,
                                                           const formats::ImportOptions& options) {
    return std::make_shared<const formats::ImportedWaveform>(
        formats::Import({files, path}, options, [] {}));
}

void ImportTable(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    std::string text = AsciiText("%.6f", TableValues, 2);
    const std::string plain = folder.Write("plain.txt", text);
    std::ranges::replace(text, ' ', ',');
    const std::string table = folder.Write("table.csv", text);
    files::StandardFiles files;
    const Reading reading(files, plain);
    const auto preTouch = [] { PreTouch(TableValues * sizeof(double)); };
    Contest contest;
    contest.Add(
        "table",
        [&] {
            if (ImportAll(files, table, {})->Points() != TableValues / 2) {
                throw std::runtime_error("the table has other points");
            }
        },
        preTouch);
    contest.Add(
        "own",
        [&] {
            const waveform::Channel channel =
                waveform::ReadAsciiDataFile(reading.File, reading.Services);
            benchmark::DoNotOptimize(channel.Numbers()->Data());
        },
        preTouch);
    contest.Run(state);
    TargetTable::Shared().Add("CSV with two columns: speed against the product's own text reader",
                              Aim::AtLeast, 0.7, contest.SpeedRatio("table", "own"),
                              TimeText(contest.Seconds("table")) + " for 10 million values");
}

void PlotRecording(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder.Path() / "samples.cs16").string();
    WriteSamples(path, 2 * PlotPoints);
    files::StandardFiles files;
    const auto waveform = ImportAll(files, path, {});
    const analysis::Signal signal = cli::SignalOf(waveform);
    Contest contest;
    contest.Add("plot", [&] {
        const plots::SheetView view = plots::SheetView::Of(signal);
        plots::PixelCanvas canvas(view.width, view.height, 1, plots::Theme::Light);
        plots::DrawSheet({signal, {}, "samples"}, plots::ContentOf(signal), view, canvas);
        benchmark::DoNotOptimize(plots::EncodePngFile(canvas.Pixels()).data());
    });
    contest.Add(
        "read", [&] { benchmark::DoNotOptimize(ImportAll(files, path, {})->Points()); },
        [] { PreTouch(2 * PlotPoints * sizeof(std::int16_t)); });
    contest.Run(state);
    TargetTable::Shared().Add(
        "plot of 64 Mi points: time against reading them", Aim::AtMost, 1.5,
        contest.TimeRatio("plot", "read"),
        TimeText(contest.Seconds("plot")) + " against " + TimeText(contest.Seconds("read")));
}

// What the download dialog's preview does from the codes to its first picture.
void OpenPreview(benchmark::State& state) {
    constexpr std::size_t Points = 1'000'000;
    SampleBuffer<std::int16_t> values(2 * Points);
    values.Resize(2 * Points);
    std::minstd_rand random(1);
    std::ranges::generate(values.Span(), [&] { return static_cast<std::int16_t>(random()); });
    waveform::DacCodes codes;
    codes.isNewModel = codes.isSentInterleaved = true;
    codes.i = waveform::SharedCodes(std::move(values));
    Contest contest;
    contest.Add("open", [&] {
        const preview::WaveformView view(codes);
        benchmark::DoNotOptimize(view.Figures().data());
        benchmark::DoNotOptimize(view.Draw({1000, 620, 1}, plots::Theme::Light).pixels.data());
    });
    contest.Run(state);
    const double seconds = contest.Seconds("open");
    TargetTable::Shared().Add("preview of a million points: seconds to its first picture",
                              Aim::AtMost, 0.5, {seconds, seconds, seconds});
}

BENCHMARK(OpenPreview)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(ImportTable)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PlotRecording)
    ->Iterations(Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
