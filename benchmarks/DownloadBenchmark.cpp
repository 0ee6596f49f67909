// A whole download of a binary file, from the warm file to the generator's acknowledgement over the
// loopback interface, against the sum of what cannot be avoided: reading the file's bytes, and
// plain sends of as many bytes as codes and markers have. The generator runs in the same process.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "benchmarks/Contest.h"
#include "benchmarks/DownloadSetup.h"
#include "benchmarks/LoopbackSink.h"
#include "benchmarks/Reading.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t Points = std::size_t{64} << 20;

// The code of a point, and its marker code.
constexpr std::size_t SentBytes = Points * 2 * sizeof(std::int16_t);

void ReadBytes(files::StandardFiles& files, const std::string& path) {
    cli::SystemClock clock;
    NoProgress progress;
    const waveform::ReadServices services{files, clock, progress, {}};
    const waveform::FileToRead file{path, "", ""};
    waveform::FileBlocks blocks(file, services);
    while (!blocks.Next().empty()) {
    }
}

std::string WhereTheTimeGoes(const std::vector<waveform::RunRecord>& records) {
    const auto median = [&](std::int64_t waveform::RunRecord::*part) {
        std::vector<double> seconds;
        for (const waveform::RunRecord& record : records) {
            seconds.push_back(static_cast<double>(record.*part) / 1000);
        }
        return TimeText(Spread::Of(std::move(seconds)).median);
    };
    return "reading " + median(&waveform::RunRecord::readMs) + ", converting " +
           median(&waveform::RunRecord::convertMs) + ", sending " +
           median(&waveform::RunRecord::transferMs);
}

void DownloadBinary(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder.Path() / "samples").string();
    WriteSamples(path, Points);
    const tests::RunningGenerator generator;
    const LoopbackSink sink;
    PlainSender plain(sink);
    SampleBuffer<std::byte> payload(SentBytes);
    payload.Resize(SentBytes);
    std::ranges::fill(payload.Span(), std::byte{1});
    files::StandardFiles files;
    std::unique_ptr<DownloadSetup> setup;
    std::vector<waveform::RunRecord> records;

    Contest contest(TimeKind::Elapsed);
    contest.Add(
        "download",
        [&] {
            setup->Download(InternalSamples(path));
            records.push_back(setup->Dialog().LastRun);
        },
        [&] {
            setup.reset();
            setup = std::make_unique<DownloadSetup>(generator.Address());
            // What is sent is held at both ends.
            PreTouch(2 * SentBytes);
        });
    contest.Add("read", [&] { ReadBytes(files, path); });
    contest.Add("send", [&] { plain.Send(payload.Span()); });
    contest.Run(state);
    records.erase(records.begin());
    TargetTable::Shared().Add(
        "download of a 64 Mi point binary file, to the acknowledgement: time against warm reading "
        "and plain sending",
        Aim::AtMost, 1.2, contest.TimeRatio("download", std::vector<std::string>{"read", "send"}),
        TimeText(contest.Seconds("download")) + ": " + WhereTheTimeGoes(records) +
            "; plain reading " + TimeText(contest.Seconds("read")) + ", plain sending " +
            TimeText(contest.Seconds("send")));
}

BENCHMARK(DownloadBinary)
    ->Iterations(Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
