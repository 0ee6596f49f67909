// An instrument that takes its data in slowly and steadily, which these systems tell from one that
// takes none.
#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "suite/scpi/ScpiInstrumentServer.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {

using namespace suite;
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

TEST(TcpTransport, WaitsForAnInstrumentAsLongAsItTakesInMore) {
    const RunningGenerator generator({.faults = {"bandwidth=120000"}});
    TransportRegistry registry;
    AddTcpTransport(registry);
    constexpr milliseconds TimeOut{600};
    ScpiInstrumentServer server(registry, {milliseconds(20000), TimeOut});
    server.Connect(generator.Address());
    const std::vector<std::int16_t> codes(120'000, 1);
    const auto start = steady_clock::now();
    server.Arb()->DownloadInterleaved("slow", codes, 0);
    EXPECT_GT(steady_clock::now() - start, TimeOut * 5 / 2);
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
    EXPECT_EQ(server.Readback()->ReadBack("slow").codes.count, codes.size());
}

}  // namespace
}  // namespace krv::tests
