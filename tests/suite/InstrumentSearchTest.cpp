#include "suite/discovery/InstrumentSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <iterator>
#include <list>

#include "simulator/device/GeneratorSettings.h"
#include "simulator/server/SimulatedTransport.h"
#include "suite/discovery/Announcement.h"
#include "suite/discovery/InstrumentList.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/scpi/SupportedModels.h"
#include "suite/transport/Asio.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

constexpr TimeOuts Patience{std::chrono::seconds(20), std::chrono::seconds(20)};

TransportRegistry Transports() {
    TransportRegistry transports;
    AddTcpTransport(transports);
    simulator::AddSimulatedTransport(transports);
    return transports;
}

std::vector<std::string> AnnouncedIn(const std::filesystem::path& folder) {
    std::vector<std::string> addresses;
    FindAnnounced([&](const std::string& address) { addresses.push_back(address); }, folder);
    return addresses;
}

TEST(InstrumentSearch, TriesThisComputerTheHostAndASimulationOfEachModel) {
    const std::string local = "tcp://127.0.0.1:5025";
    for (const std::string host : {"My Computer", "localhost", "127.0.0.2", "::1", ""}) {
        const auto places = UsualPlaces(host, {});
        EXPECT_EQ(places.size(), 5 + SupportedModels.size()) << host;
        EXPECT_EQ(places[0].address, local);
        EXPECT_EQ(places[1].address, local) << "an address is tried once";
        EXPECT_EQ(places[5].address, "sim://M7718C");
    }
    EXPECT_EQ(UsualPlaces("bench7", {})[1].address, "tcp://bench7:5025");
    EXPECT_EQ(UsualPlaces("fe80::1", {})[1].address, "tcp://[fe80::1]:5025");
}

TEST(InstrumentSearch, FindsWhatAnswersAndLeavesOutTheRest) {
    const RunningGenerator generator({.model = "M9920D"});
    const std::atomic<bool> cancelled = false;
    const auto found = FindInstruments(
        Transports(),
        PlacesAt({"tcp://127.0.0.1:1", "nonsense", generator.Address(), "sim://KRV-B", "sim://M0"}),
        Patience, cancelled);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].address, generator.Address());
    EXPECT_EQ(found[0].model, "M9920D");
    EXPECT_EQ(found[0].serialNumber, "US00000003");
    EXPECT_EQ(found[0].firmwareRevision, "B.03.40");
    EXPECT_EQ(found[1].model, "KRV-B");
    EXPECT_EQ(found[1].serialNumber, "US00000006");
    EXPECT_TRUE(FindInstruments(Transports(), PlacesAt({"sim://KRV-B"}), Patience, true).empty());
}

// Each look goes on when the other has begun and the first instrument has been told.
TEST(InstrumentSearch, TellsEachInstrumentAtOnceAndLooksIntoAllPlacesTogether) {
    std::array<std::promise<void>, 3> events;
    std::array<std::shared_future<void>, 3> awaited;
    std::ranges::transform(events, awaited.begin(), [](auto& event) { return event.get_future(); });
    const auto place = [&](std::size_t own, const std::string& address) {
        return SearchPlace{.look = [&, own, address](const AddressTaker& take, WaitWatcher&) {
            events[own].set_value();
            for (const auto& event : awaited) {
                EXPECT_EQ(event.wait_for(std::chrono::seconds(20)), std::future_status::ready);
            }
            take(address);
        }};
    };
    const auto found = FindInstruments(
        Transports(),
        {place(0, "sim://M9920C"), place(1, "sim://M771XB"), {"sim://M7718C"}, {"sim://M9920C"}},
        Patience, false, {.onFound = [&](const FoundInstrument& each) {
            if (each.model == "M7718C") {
                events[2].set_value();
            }
        }});
    std::vector<std::string> models;
    std::ranges::transform(found, std::back_inserter(models), &FoundInstrument::model);
    EXPECT_EQ(models, (std::vector<std::string>{"M9920C", "M771XB", "M7718C"}))
        << "one that is named twice has the place that comes first";
}

TEST(InstrumentSearch, ALineOfTheListStaysWhereItIsUntilItsInstrumentIsGone) {
    InstrumentList list;
    const auto addresses = [&] {
        std::vector<std::string> all;
        std::ranges::transform(list.Instruments(), std::back_inserter(all),
                               &FoundInstrument::address);
        return all;
    };
    const FoundInstrument simulated{.address = "sim://M7718C", .place = 5};
    FoundInstrument tenth{.address = "tcp://10.0.0.10:5025", .place = 4};
    list.Add(simulated);
    list.Add(tenth);
    list.Add({.address = "tcp://10.0.0.9:5025", .place = 4});
    list.Add({.address = "tcp://127.0.0.1:5025", .place = 0});
    const std::vector<std::string> all{"tcp://127.0.0.1:5025", "tcp://10.0.0.9:5025", tenth.address,
                                       simulated.address};
    EXPECT_EQ(addresses(), all);
    list.EndSearch();
    list.BeginSearch();
    list.Add(simulated);
    list.BeginSearch();
    tenth.model = "M9920C";
    list.Add(tenth);
    EXPECT_EQ(addresses(), all);
    list.EndSearch();
    EXPECT_EQ(list.Instruments(), std::vector{tenth});
}

// Connections to such are accepted, and then nothing is answered.
TEST(InstrumentSearch, TakesNoLongerForManyDeadInstruments) {
    asio::io_context context;
    const asio::ip::tcp::acceptor deaf(context, {asio::ip::address_v4::any(), 0});
    const std::string port = std::to_string(deaf.local_endpoint().port());
    std::vector<SearchPlace> places = PlacesAt({"sim://KRV-B"});
    for (int number = 1; number <= 40; ++number) {
        places.push_back({"tcp://127.0.0." + std::to_string(number) + ':' + port});
    }
    int failures = 0;
    const auto start = std::chrono::steady_clock::now();
    constexpr std::chrono::seconds Limit{2};
    const auto found =
        FindInstruments(Transports(), places, {Limit, Limit}, false,
                        {.onFailure = [&](const auto&, const auto&) { ++failures; }});
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20 * Limit);
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
        EXPECT_EQ(AnnouncedIn(folder.Path()), std::vector{generator.Address()});
        EXPECT_EQ(folder.Names().count("krv-sim-1"), 0U) << "nothing listens there";
        EXPECT_EQ(folder.Names().size(), 7U) << "the others are no signs, or not of their ports";
        folder.Write("krv-sim-1", old);
        const Announcement next(1, folder.Path());
        EXPECT_NE(folder.Content("krv-sim-1"), old);
    }
    EXPECT_EQ(folder.Names().size(), 6U);
    EXPECT_TRUE(AnnouncedIn(folder.Path()).empty());
    EXPECT_TRUE(AnnouncedIn(folder.Path() / "absent").empty());
    const Announcement unheard(1, folder.Path() / "absent");
}

TEST(InstrumentSearch, LeavesFilesAloneThatSomebodyPutInPlaceOfASign) {
    const TemporaryFolder folder;
    folder.Write("krv-sim-1", "mine");
    {
        const Announcement hindered(1, folder.Path());
        const Announcement replaced(2, folder.Path());
        folder.Write("krv-sim-2", "mine");
        EXPECT_TRUE(AnnouncedIn(folder.Path()).empty());
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
    EXPECT_TRUE(AnnouncedIn(folder.Path()).empty());
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
