// How the cost grows with the number of points, and what looking up for the user costs.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ostream>
#include <streambuf>

#include "benchmarks/Contest.h"
#include "benchmarks/DownloadSetup.h"
#include "benchmarks/Reading.h"
#include "tests/support/TemporaryFolder.h"
#include "waveform/checks/ChannelConversion.h"
#include "waveform/readers/BinaryDataFiles.h"

namespace krv::benchmarks {
namespace {

void Convert(waveform::SampleSource& source) {
    waveform::ChannelConversion channel(source, nullptr);
    waveform::ValueRange range;
    waveform::CodeRange codeRange;
    SampleBuffer<std::int16_t> codes;
    channel.Measure("", range);
    channel.Scale("", waveform::ScalingFor(range.Peak(), 100, true), codes, codeRange);
    benchmark::DoNotOptimize(codes.Data());
}

// Reading and converting 2^22 to 2^26 points, which all come from memory, as often as makes 2^26 in
// all: what is aimed at is the same cost a point throughout.
void Growth(benchmark::State& state) {
    constexpr int SmallestPower = 22;
    constexpr int LargestPower = 26;
    const tests::TemporaryFolder folder;
    files::StandardFiles files;
    Contest contest;
    for (int power = LargestPower; power >= SmallestPower; power -= 2) {
        const std::size_t points = std::size_t{1} << power;
        const std::string path = (folder.Path() / std::to_string(power)).string();
        WriteSamples(path, points);
        contest.Add(
            "2^" + std::to_string(power),
            [&files, path, points] {
                const Reading reading(files, path);
                for (std::size_t done = 0; done < std::size_t{1} << LargestPower; done += points) {
                    const waveform::Channel channel = waveform::ReadBinaryDacFile(
                        reading.File, waveform::SampleFormat::LittleEndianSigned, reading.Services);
                    waveform::LoadedInternalValues source(*channel.Internal(), points);
                    Convert(source);
                }
            },
            [points] { PreTouch(points * 2 * sizeof(std::int16_t)); });
    }
    contest.Run(state);
    for (int power = SmallestPower; power < LargestPower; power += 2) {
        const std::string name = "2^" + std::to_string(power);
        TargetTable::Shared().Add(
            "reading and converting: cost a point with 2^26 points against " + name, Aim::AtMost,
            1.5, contest.TimeRatio("2^26", name),
            TimeText(contest.Seconds(name)) + " for 2^26 points in all");
    }
}

class NullBuffer final : public std::streambuf {
 protected:
    int overflow(int character) override { return character; }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

// All the polls of a conversion, without the conversion, against the conversion without polls.
void Polls(benchmark::State& state) {
    constexpr std::size_t Points = std::size_t{64} << 20;
    NullBuffer nowhere;
    std::ostream terminal(&nowhere);
    DownloadSetup setup({}, &terminal);
    progress::frmCallback& dialog = setup.Dialog().Callback1();
    dialog.SetWaitMessage(std::int16_t{1}, "Overall progress...");
    dialog.SetProgressBar(std::int16_t{1}, 0, 1000, 500);
    dialog.LinkProgressBars(std::int16_t{2}, 500, 600);
    SampleBuffer<double> values(Points);
    values.Resize(Points);
    std::ranges::fill(values.Span(), 0.5);
    Contest contest;
    waveform::RunProgress rows(dialog);
    waveform::LoadedValues source(values.Span());
    contest.Add("polls", [&] {
        waveform::ConversionProgress progress(rows, 2 * Points);
        for (std::size_t done = 0; done < 2 * Points; done += waveform::SampleSource::BlockSize) {
            progress.Advance(waveform::SampleSource::BlockSize);
        }
        progress.Finish();
    });
    contest.Add(
        "conversion", [&] { Convert(source); }, [] { PreTouch(Points * sizeof(std::int16_t)); });
    contest.Run(state);
    TargetTable::Shared().Add(
        "progress and cancel polls of a conversion, on a terminal: share of the run", Aim::AtMost,
        0.01, contest.TimeRatio("polls", "conversion"),
        TimeText(contest.Seconds("polls")) + " of " + TimeText(contest.Seconds("conversion")));
}

BENCHMARK(Growth)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Polls)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
