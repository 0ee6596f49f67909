// Sending codes in the wire's order over the loopback interface, against plain sends of as many
// bytes. Both end with a query that is answered when everything has been taken in.
#include <benchmark/benchmark.h>

#include <array>
#include <stdexcept>

#include "benchmarks/Contest.h"
#include "benchmarks/LoopbackSink.h"
#include "common/memory/SampleBuffer.h"
#include "suite/scpi/ScpiConnection.h"

namespace krv::benchmarks {
namespace {

constexpr std::size_t Codes = std::size_t{64} << 20;

SampleBuffer<std::int16_t> SomeCodes() {
    SampleBuffer<std::int16_t> codes(Codes);
    codes.Resize(Codes);
    for (std::size_t index = 0; index < Codes; ++index) {
        codes[index] = static_cast<std::int16_t>(index);
    }
    return codes;
}

void SendCodes(benchmark::State& state) {
    const SampleBuffer<std::int16_t> codes = SomeCodes();
    const LoopbackSink forServer;
    const LoopbackSink forPlain;
    suite::TransportRegistry transports;
    suite::AddTcpTransport(transports);
    const suite::TimeOuts timeOuts;
    suite::ScpiConnection connection(transports.Open(forServer.Address(), timeOuts),
                                     forServer.Address(), timeOuts);
    PlainSender plain(forPlain);
    Contest contest(TimeKind::Elapsed);
    contest.Add("server", [&] {
        connection.WriteBlocks("ARBitrary:DATA:INTerleaved \"W\",", std::array{codes.Span()});
        if (connection.Query("*OPC?") != "1") {
            throw std::runtime_error("the sink doesn't answer");
        }
    });
    contest.Add("plain", [&] { plain.Send(std::as_bytes(codes.Span())); });
    contest.Run(state);
    TargetTable::Shared().Add(
        "sending 128 MiB over TCP loopback: speed against plain sends of 1 MiB", Aim::AtLeast, 0.7,
        contest.SpeedRatio("server", "plain"),
        TimeText(contest.Seconds("server")) + " against " + TimeText(contest.Seconds("plain")));
}

// Two threads and two cores make for a wide spread.
BENCHMARK(SendCodes)
    ->Iterations(3 * Contest::Rounds)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace krv::benchmarks
