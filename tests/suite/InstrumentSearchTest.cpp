#include "suite/discovery/InstrumentSearch.h"

#include <gtest/gtest.h>

#include <chrono>
#include <list>

#include "simulator/device/GeneratorSettings.h"
#include "simulator/server/SimulatedTransport.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/scpi/SupportedModels.h"
#include "suite/transport/Asio.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

constexpr TimeOuts Patience{std::chrono::seconds(5), std::chrono::seconds(5)};

TransportRegistry Transports() {
    TransportRegistry transports;
    AddTcpTransport(transports);
    simulator::AddSimulatedTransport(transports);
    return transports;
}

TEST(InstrumentSearch, TriesThisComputerTheHostAndASimulationOfEachModel) {
    const std::string local = "tcp://127.0.0.1:5025";
    for (const std::string host : {"My Computer", "localhost", "127.0.0.2", "::1", ""}) {
        const auto addresses = CandidateAddresses(host, {});
        EXPECT_EQ(addresses.size(), 1 + SupportedModels.size()) << host;
        EXPECT_EQ(addresses.front(), local);
    }
    const auto announced = CandidateAddresses("", {"tcp://127.0.0.1:40000", local});
    EXPECT_EQ(announced[0], local);
    EXPECT_EQ(announced[1], "tcp://127.0.0.1:40000");
    EXPECT_EQ(announced.size(), 2 + SupportedModels.size());
    EXPECT_EQ(CandidateAddresses("bench7")[1], "tcp://bench7:5025");
    EXPECT_EQ(CandidateAddresses("fe80::1")[1], "tcp://[fe80::1]:5025");
}

TEST(InstrumentSearch, FindsWhatAnswersAndLeavesOutTheRest) {
    const RunningGenerator generator({.model = "M9920D"});
    const std::atomic<bool> cancelled = false;
    const auto found = FindInstruments(
        Transports(),
        {"tcp://127.0.0.1:1", "nonsense", generator.Address(), "sim://KRV-B", "sim://M0"}, Patience,
        cancelled);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].address, generator.Address());
    EXPECT_EQ(found[0].model, "M9920D");
    EXPECT_EQ(found[0].serialNumber, "US00000003");
    EXPECT_EQ(found[0].firmwareRevision, "B.03.40");
    EXPECT_EQ(found[1].model, "KRV-B");
    EXPECT_EQ(found[1].serialNumber, "US00000006");
    EXPECT_TRUE(FindInstruments(Transports(), {"sim://KRV-B"}, Patience, true).empty());
}

// Connections to such are accepted, and then nothing is answered.
TEST(InstrumentSearch, TakesNoLongerForManyDeadInstruments) {
    asio::io_context context;
    const asio::ip::tcp::acceptor deaf(context, {asio::ip::address_v4::loopback(), 0});
    std::vector<std::string> addresses(
        40, "tcp://127.0.0.1:" + std::to_string(deaf.local_endpoint().port()));
    addresses.emplace_back("sim://KRV-B");
    int failures = 0;
    const auto start = std::chrono::steady_clock::now();
    constexpr std::chrono::milliseconds Short{500};
    const auto found = FindInstruments(Transports(), addresses, {Short, Short}, false,
                                       [&](const auto&, const auto&) { ++failures; });
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10 * Short);
    EXPECT_EQ(found.size(), 1U);
    EXPECT_EQ(failures, 40);
}

TEST(InstrumentSearch, FindsWhatHasAnnouncedItselfAndTakesOldSignsAway) {
    const TemporaryFolder folder;
    const RunningGenerator generator;
    std::string old;
    {
        const Announcement ended(1, folder.Path());
        old = folder.Content("krv-sim-1");
    }
    EXPECT_TRUE(folder.Names().empty());
    folder.Write("krv-sim-1", old);
    folder.Write("krv-sim-2", old);
    for (const char* other : {"krv-sim-3", "krv-sim-", "krv-sim-x", "krv-sim-70000", "else"}) {
        std::filesystem::create_directory(folder.Path() / other);
    }
    {
        const Announcement announcement(generator.Port(), folder.Path());
        EXPECT_EQ(AnnouncedAddresses(folder.Path()), std::vector{generator.Address()});
        EXPECT_EQ(folder.Names().count("krv-sim-1"), 0U) << "nothing listens there";
        EXPECT_EQ(folder.Names().size(), 7U) << "the others are no signs, or not of their ports";
        folder.Write("krv-sim-1", old);
        const Announcement next(1, folder.Path());
        EXPECT_NE(folder.Content("krv-sim-1"), old);
    }
    EXPECT_EQ(folder.Names().size(), 6U);
    EXPECT_TRUE(AnnouncedAddresses(folder.Path()).empty());
    EXPECT_TRUE(AnnouncedAddresses(folder.Path() / "absent").empty());
    const Announcement unheard(1, folder.Path() / "absent");
}

TEST(InstrumentSearch, LeavesFilesAloneThatSomebodyPutInPlaceOfASign) {
    const TemporaryFolder folder;
    folder.Write("krv-sim-1", "mine");
    {
        const Announcement hindered(1, folder.Path());
        const Announcement replaced(2, folder.Path());
        folder.Write("krv-sim-2", "mine");
        EXPECT_TRUE(AnnouncedAddresses(folder.Path()).empty());
    }
    EXPECT_EQ(folder.Content("krv-sim-1"), "mine");
    EXPECT_EQ(folder.Content("krv-sim-2"), "mine");
}

TEST(InstrumentSearch, TriesNoMoreSignsThanASearchHasTimeFor) {
    const TemporaryFolder folder;
    std::list<Announcement> ended;
    for (std::uint16_t port = 1; port <= 100; ++port) {
        ended.emplace_back(port, folder.Path());
    }
    EXPECT_TRUE(AnnouncedAddresses(folder.Path()).empty());
    EXPECT_GE(folder.Names().size(), 68U);
    EXPECT_LT(folder.Names().size(), 100U);
}

TEST(InstrumentSearch, TellsTheHostOfAnAddress) {
    EXPECT_EQ(ComputerOf("sim://M7718C"), "My Computer");
    EXPECT_EQ(ComputerOf("tcp://127.0.0.1:5025"), "My Computer");
    EXPECT_EQ(ComputerOf("tcp://[::1]:5025"), "My Computer");
    EXPECT_EQ(ComputerOf("tcp://bench7:5025"), "bench7");
}

TEST(ScpiInstrumentServer, LeavesAnAdoptedSessionOpen) {
    const auto instrument = OpenInstrument(Transports(), "sim://M771XB", Patience);
    {
        ScpiInstrumentServer server(Transports(), Patience);
        server.Connect("sim://M7718C");
        const auto own = server.Instrument();
        server.Adopt(instrument);
        EXPECT_EQ(server.Instrument()->Model(), "M771XB");
        EXPECT_EQ(own->IO(), nullptr) << "its own session has ended";
        server.Disconnect();
        EXPECT_EQ(server.Instrument()->IO(), nullptr);
        server.Adopt(instrument);
        server.Connect("sim://M9920C");
        EXPECT_EQ(server.Instrument()->Model(), "M9920C");
        server.Adopt(instrument);
    }
    EXPECT_EQ(instrument->ReadError().number, 0);
}

}  // namespace
}  // namespace krv::tests
