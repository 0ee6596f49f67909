// The reader of 16-bit files, from the system's file cache, against filling fresh memory of the
// result's size and page kind.
#include <benchmark/benchmark.h>

#include "benchmarks/Contest.h"
#include "benchmarks/Reading.h"
#include "common/files/StandardFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "waveform/readers/BinaryDataFiles.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t Points = std::size_t{64} << 20;

void ReadBinary(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder.Path() / "samples").string();
    WriteSamples(path, Points);
    files::StandardFiles files;
    const Reading reading(files, path);
    const auto read = [&](waveform::SampleFormat format) {
        const waveform::Channel channel =
            waveform::ReadBinaryDacFile(reading.File, format, reading.Services);
        benchmark::DoNotOptimize(channel.Internal()->codes.Span().data());
    };
    const auto preTouch = [] { PreTouch(Points * sizeof(std::int16_t)); };
    Contest contest;
    contest.Add(
        "little", [&] { read(waveform::SampleFormat::LittleEndianSigned); }, preTouch);
    contest.Add(
        "big", [&] { read(waveform::SampleFormat::BigEndianUnsigned); }, preTouch);
    contest.Add(
        "memset", [] { PreTouch(Points * sizeof(std::int16_t)); }, preTouch);
    contest.Run(state);
    TargetTable& table = TargetTable::Shared();
    table.Add(
        "int16 file, 64 Mi points: time against memset of fresh memory", Aim::AtMost, 1.5,
        contest.TimeRatio("little", "memset"),
        TimeText(contest.Seconds("little")) + " against " + TimeText(contest.Seconds("memset")));
    table.Add("int16 file with swapped bytes: time against the unswapped one", Aim::AtMost, 1.1,
              contest.TimeRatio("big", "little"));
}

BENCHMARK(ReadBinary)->Iterations(Contest::Rounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
