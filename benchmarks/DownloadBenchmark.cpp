// Whole downloads, from a warm file to the generator's acknowledgement over the loopback interface,
// against the sum of what cannot be avoided: reading the file's bytes, writing the memory that the
// results take once, and plain sends of as many bytes. The generator runs in the same process.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <vector>

#include "benchmarks/Contest.h"
#include "benchmarks/DownloadSession.h"
#include "benchmarks/LoopbackSink.h"
#include "benchmarks/Reading.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t BinaryPoints = std::size_t{64} << 20;
constexpr std::size_t AsciiValues = 10'000'000;

// A value takes 8 bytes, its code and its marker code 2 each.
constexpr std::size_t ResultBytes = sizeof(double) + 2 * sizeof(std::int16_t);
constexpr std::size_t SentBytes = 2 * sizeof(std::int16_t);

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

std::string Limits(const Contest& contest) {
    return "; limits: reading " + TimeText(contest.Seconds("read")) + ", writing " +
           TimeText(contest.Seconds("write")) + ", sending " + TimeText(contest.Seconds("send"));
}

void Download(benchmark::State& state, const std::string& what, cli::WaveformArguments arguments,
              std::size_t points) {
    arguments.name = "WAVE";
    const tests::RunningGenerator generator;
    const LoopbackSink sink;
    PlainSender plain(sink);
    SampleBuffer<std::byte> payload(points * SentBytes);
    payload.Resize(points * SentBytes);
    std::ranges::fill(payload.Span(), std::byte{1});
    files::StandardFiles files;
    std::unique_ptr<DownloadSession> session;
    std::vector<waveform::RunRecord> records;

    Contest contest(TimeKind::Elapsed);
    contest.Add(
        "download",
        [&] {
            session->Download(arguments);
            records.push_back(session->Dialog().LastRun);
        },
        [&] {
            session.reset();
            session = std::make_unique<DownloadSession>(generator.Address());
            PreTouch(points * (ResultBytes + SentBytes));
        });
    contest.Add("read", [&] { ReadBytes(files, arguments.iFile); });
    contest.Add(
        "write", [&] { PreTouch(points * ResultBytes); }, [&] { PreTouch(points * ResultBytes); });
    contest.Add("send", [&] { plain.Send(payload.Span()); });
    contest.Run(state);
    records.erase(records.begin());
    TargetTable::Shared().Add(
        what + ", to the acknowledgement: time against the sum of the limits", Aim::ForTheRecord, 0,
        contest.TimeRatio("download", {"read", "write", "send"}),
        TimeText(contest.Seconds("download")) + ": " + WhereTheTimeGoes(records) + Limits(contest));
}

void DownloadBinary(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    cli::WaveformArguments arguments;
    arguments.iFile = (folder.Path() / "samples").string();
    arguments.fileType = waveform::FileTypeIndex::LittleEndian;
    arguments.waveformType = waveform::WaveformTypeIndex::Internal16;
    WriteSamples(arguments.iFile, BinaryPoints);
    Download(state, "download of a 64 Mi point binary file", arguments, BinaryPoints);
}

void DownloadAscii(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    cli::WaveformArguments arguments;
    arguments.iFile = (folder.Path() / "numbers").string();
    std::ofstream(arguments.iFile, std::ios::binary) << AsciiText("%.6f", AsciiValues, 1);
    Download(state, "download of a 10 million point ASCII file", arguments, AsciiValues);
}

BENCHMARK(DownloadBinary)
    ->Iterations(Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(DownloadAscii)
    ->Iterations(Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
