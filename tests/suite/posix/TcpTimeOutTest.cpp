// Time-outs that only these systems can be brought to: a listener with a full queue takes
// connection requests and never answers them.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <list>
#include <sstream>
#include <string>
#include <vector>

#include "suite/discovery/Announcement.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/transport/Asio.h"
#include "suite/transport/Transport.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

using asio::ip::tcp;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

TEST(TcpTransport, GivesUpOnAComputerThatDoesNotAnswer) {
    asio::io_context context;
    tcp::acceptor acceptor(context, tcp::endpoint(asio::ip::address_v4::loopback(), 0));
    acceptor.listen(0);
    std::list<tcp::socket> waiting;
    bool accepted = true;
    while (accepted && waiting.size() < 50) {
        accepted = false;
        waiting.emplace_back(context).async_connect(
            acceptor.local_endpoint(), [&accepted](const std::error_code&) { accepted = true; });
        context.restart();
        context.run_for(milliseconds(1000));
    }
    ASSERT_FALSE(accepted) << "the queue never fills";
    TransportRegistry registry;
    AddTcpTransport(registry);
    const std::string address =
        "tcp://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port());
    const auto start = std::chrono::steady_clock::now();
    const TimeOuts timeOuts{milliseconds(300), milliseconds(300)};
    EXPECT_EQ(DescriptionOf([&] { return registry.Open(address, timeOuts); }),
              "No connection to the instrument at " + address + ": no answer within 0.3 s.");
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(30000));

    // Somebody's sign leads there; the search goes on without it.
    const TemporaryFolder folder;
    const Announcement sign(acceptor.local_endpoint().port(), folder.Path());
    const auto searched = steady_clock::now();
    FindAnnounced([](const std::string& found) { ADD_FAILURE() << found; }, folder.Path());
    EXPECT_LT(steady_clock::now() - searched, milliseconds(30000));
    EXPECT_EQ(folder.Names().size(), 1U) << "it is not known to be old";

    for (tcp::socket& socket : waiting) {
        std::error_code ignored;
        socket.close(ignored);
    }
    context.restart();
    context.run();
}

// Of the connection to the port: the kernel's code of the timer that runs.
std::string TimerOfConnectionTo(std::uint16_t port) {
    std::ostringstream remote;
    remote << "0100007F:" << std::hex << std::uppercase << std::setw(4) << std::setfill('0')
           << port;
    std::ifstream table("/proc/net/tcp");
    for (std::string line; std::getline(table, line);) {
        std::istringstream fields(line);
        std::string number, local, other, state, queues, timer;
        fields >> number >> local >> other >> state >> queues >> timer;
        if (other == remote.str() && state == "01") {
            return timer.substr(0, 2);
        }
    }
    return "none";
}

TEST(TcpTransport, AsksNowAndThenWhetherTheInstrumentIsStillThere) {
    const RunningGenerator generator;
    TransportRegistry registry;
    AddTcpTransport(registry);
    const auto transport = registry.Open(generator.Address(), {});
    EXPECT_EQ(TimerOfConnectionTo(generator.Port()), "02");
}

// Slow and steady, which these systems can tell apart from an instrument that takes nothing in.
TEST(TcpTransport, WaitsForAnInstrumentAsLongAsItTakesInMore) {
    const RunningGenerator generator({.faults = {"bandwidth=120000"}});
    TransportRegistry registry;
    AddTcpTransport(registry);
    constexpr milliseconds TimeOut{600};
    const std::vector<std::int16_t> codes(120'000, 1);
    std::string failure = "none yet";
    // A busy machine may be still for that long.
    for (int times = 0; times < 5 && failure != "no error"; ++times) {
        ScpiInstrumentServer server(registry, {milliseconds(20000), milliseconds(20000)});
        server.Connect(generator.Address());
        server.ScpiAccess()->SetTimeOuts({TimeOut, TimeOut});
        const auto start = steady_clock::now();
        failure = DescriptionOf([&] {
            server.Arb()->DownloadInterleaved("slow", codes, 0);
            EXPECT_GT(steady_clock::now() - start, TimeOut * 5 / 2);
            EXPECT_EQ(server.Instrument()->ReadError().number, 0);
            EXPECT_EQ(server.Readback()->ReadBack("slow").codes.count, codes.size());
        });
    }
    EXPECT_EQ(failure, "no error");
}

}  // namespace
}  // namespace krv::tests
