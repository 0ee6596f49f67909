// Peaks of resident memory, beyond what the data itself takes. They hardly differ from run to run;
// three runs each show it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "benchmarks/DownloadSetup.h"
#include "benchmarks/LoopbackSink.h"
#include "benchmarks/PeakMemory.h"
#include "benchmarks/Reading.h"
#include "benchmarks/TargetTable.h"
#include "common/files/StandardFiles.h"
#include "suite/scpi/ScpiConnection.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "waveform/checks/ChannelConversion.h"
#include "waveform/readers/AsciiDataFile.h"
#include "waveform/run/InterleaveCodes.h"

namespace krv::benchmarks {
namespace {

constexpr int Runs = 3;
constexpr double MiB = 1 << 20;
constexpr std::size_t BinaryPoints = std::size_t{64} << 20;
constexpr std::size_t AsciiValues = 10'000'000;
constexpr std::size_t Cells = 4'000'000;

// `dataBytes` are what the work's result takes by right.
void MeasurePeak(benchmark::State& state, const std::string& what, double targetMiB,
                 std::size_t dataBytes, const std::function<void(const PeakStart&)>& work) {
    std::vector<double> beyond;
    for (auto unused : state) {
        beyond.push_back((static_cast<double>(PeakGrowth(work)) - static_cast<double>(dataBytes)) /
                         MiB);
    }
    const Spread spread = Spread::Of(std::move(beyond));
    state.counters["beyond_MiB"] = spread.median;
    TargetTable::Shared().Add("peak memory, " + what + ", in MiB", Aim::AtMost, targetMiB, spread);
}

void PeakOfAscii(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder.Path() / "numbers").string();
    std::ofstream(path, std::ios::binary) << AsciiText("%.6f", AsciiValues, 1);
    MeasurePeak(
        state, "loading 10 million ASCII values beyond 8 bytes a value", 4,
        AsciiValues * sizeof(double), [&path](const PeakStart& start) {
            files::StandardFiles files;
            const Reading reading(files, path);
            start();
            benchmark::DoNotOptimize(waveform::ReadAsciiDataFile(reading.File, reading.Services));
        });
}

// The samples, which are the codes as well, and the marker codes. The generator is another process.
void PeakOfDownload(benchmark::State& state) {
    const tests::TemporaryFolder folder;
    const std::string path = (folder.Path() / "samples").string();
    WriteSamples(path, BinaryPoints);
    const tests::RunningGenerator generator;
    MeasurePeak(state, "downloading a 64 Mi point binary file beyond 4 bytes a point", 4,
                BinaryPoints * 2 * sizeof(std::int16_t), [&](const PeakStart& start) {
                    DownloadSetup setup(generator.Address());
                    start();
                    setup.Download(InternalSamples(path));
                });
}

void ConvertInTwoPasses(waveform::SampleSource& source) {
    SampleBuffer<std::int16_t> codes;
    waveform::ValueRange values;
    waveform::CodeRange range;
    waveform::ChannelConversion channel(source, nullptr);
    channel.Measure("", values);
    channel.Scale("", waveform::ScalingFor(values.Peak(), 100, true), codes, range);
    benchmark::DoNotOptimize(codes.Data());
}

void PeakOfConversion(benchmark::State& state) {
    MeasurePeak(state, "converting 64 Mi values beyond them and 2 bytes a code", 1,
                BinaryPoints * sizeof(std::int16_t), [](const PeakStart& start) {
                    SampleBuffer<double> values(BinaryPoints);
                    values.Resize(BinaryPoints);
                    std::ranges::fill(values.Span(), 0.5);
                    waveform::LoadedValues source(values.Span());
                    start();
                    ConvertInTwoPasses(source);
                });
}

// Cells that hold their index.
class CountingRange final : public ports::Range {
 public:
    std::int32_t AreaCount() override { return 1; }
    std::int32_t RowCount() override { return Cells; }
    std::int32_t ColumnCount() override { return 1; }
    std::int32_t CellCount() override { return Cells; }
    std::string Address() override { return ""; }
    ports::SheetName Sheet() override { return {}; }
    void ReadValues(std::size_t firstCell, std::span<Value> values) override {
        for (Value& value : values) {
            value = static_cast<double>(firstCell++);
        }
    }
    std::string CellAddress(std::size_t) override { return ""; }
};

void PeakOfCells(benchmark::State& state) {
    MeasurePeak(state, "converting 4 million cells beyond 8 bytes a value and 2 bytes a code", 1,
                Cells * (sizeof(double) + sizeof(std::int16_t)), [](const PeakStart& start) {
                    start();
                    waveform::CellValues source(std::make_shared<CountingRange>(), Cells,
                                                waveform::CellValues::Passes::Two);
                    ConvertInTwoPasses(source);
                });
}

void PeakOfSending(benchmark::State& state) {
    const LoopbackSink sink;
    MeasurePeak(state, "sending 128 MiB beyond the payload", 2, 0, [&sink](const PeakStart& start) {
        SampleBuffer<std::int16_t> codes(BinaryPoints);
        codes.Resize(BinaryPoints);
        std::ranges::fill(codes.Span(), std::int16_t{1});
        suite::TransportRegistry transports;
        suite::AddTcpTransport(transports);
        const suite::TimeOuts timeOuts;
        start();
        suite::ScpiConnection connection(transports.Open(sink.Address(), timeOuts), sink.Address(),
                                         timeOuts);
        connection.WriteBlocks("ARBitrary:DATA:INTerleaved \"W\",",
                               std::array{std::as_const(codes).Span()});
        benchmark::DoNotOptimize(connection.Query("*OPC?"));
    });
}

void PeakOfInterleaving(benchmark::State& state) {
    constexpr std::size_t Codes = BinaryPoints / 2;
    MeasurePeak(state, "interleaving two channels of 32 Mi codes beyond them", 2, 0,
                [](const PeakStart& start) {
                    waveform::SharedCodes channels[2];
                    for (auto& channel : channels) {
                        SampleBuffer<std::int16_t> codes(Codes);
                        codes.Resize(Codes);
                        std::ranges::fill(codes.Span(), std::int16_t{1});
                        channel = waveform::SharedCodes(std::move(codes));
                    }
                    start();
                    auto interleaved = waveform::InterleaveCodes(channels[0], channels[1], 0);
                    waveform::SeparateInterleaved(interleaved, channels[0], Codes, channels[1],
                                                  Codes);
                    benchmark::DoNotOptimize(channels[1].Span().data());
                });
}

BENCHMARK(PeakOfAscii)->Iterations(Runs)->Unit(benchmark::kMillisecond);
BENCHMARK(PeakOfDownload)->Iterations(Runs)->Unit(benchmark::kMillisecond);
BENCHMARK(PeakOfConversion)->Iterations(Runs)->Unit(benchmark::kMillisecond);
BENCHMARK(PeakOfCells)->Iterations(Runs)->Unit(benchmark::kMillisecond);
BENCHMARK(PeakOfInterleaving)->Iterations(Runs)->Unit(benchmark::kMillisecond);
BENCHMARK(PeakOfSending)->Iterations(Runs)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
