// The way through VISA, over a library whose instruments are simulated generators.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "common/Crc32.h"
#include "suite/discovery/InstrumentSearch.h"
#include "suite/discovery/VisaAddresses.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/transport/visa/VisaSession.h"
#include "suite/transport/visa/VisaTransport.h"
#include "tests/support/BenchVisaLibrary.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite;

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* Gpib = "GPIB0::19::INSTR";

class VisaTransportTest : public ::testing::Test {
 protected:
    static TransportRegistry Registry(const std::string& library = BenchVisaLibrary::File()) {
        TransportRegistry registry;
        AddVisaTransport(registry, library);
        AddTcpTransport(registry);
        return registry;
    }
    void Connect(const std::string& address) {
        constexpr milliseconds timeOut{20000};
        server =
            std::make_unique<ScpiInstrumentServer>(Registry(), TimeOuts{timeOut, timeOut, timeOut});
        server->Connect(address);
    }
    // For a time-out that is to strike.
    void LoseTheWillToWait() const {
        server->ScpiAccess()->SetTimeOuts({milliseconds(200), milliseconds(200)});
    }
    // What hinders a connection, without what it begins with.
    static std::string Hindrance(const std::string& address,
                                 const std::string& library = BenchVisaLibrary::File(),
                                 milliseconds timeOut = milliseconds(20000)) {
        const std::string start = "No connection to the instrument at " + address + ": ";
        const std::string text = DescriptionOf([&] {
            return Registry(library).Open(address, {timeOut, timeOut});
        });
        EXPECT_TRUE(text.starts_with(start)) << text;
        return text.substr(std::min(start.size(), text.size()));
    }
    void ExpectCleared() {
        std::vector<std::string> trace;
        // The last of it may be a little late.
        for (int tries = 0; tries < 2000 && (trace.empty() || trace.back() != "close"); ++tries) {
            std::ranges::move(visa.TakeTrace(), std::back_inserter(trace));
            std::this_thread::sleep_for(milliseconds(10));
        }
        const auto clear = std::ranges::find(trace, "clear");
        EXPECT_NE(clear, trace.end());
        EXPECT_NE(std::find(clear, trace.end(), "remote control 6"), trace.end());
        EXPECT_EQ(trace.back(), "close");
    }

    BenchVisaLibrary visa;
    std::unique_ptr<ScpiInstrumentServer> server;
    // Line ends all over.
    std::vector<std::int16_t> codes = std::vector<std::int16_t>(100'000, 0x0A0A);
};

TEST_F(VisaTransportTest, CarriesEveryByteAndEndsEachMessageWithItsLineEndAlone) {
    for (const char* address :
         {Gpib, "USB0::0x1AB1::0x0641::SN7", "visa://TCPIP0::bench::inst0::INSTR",
          "visa://ASRL1::INSTR", "visa://TCPIP0::bench::5025::SOCKET"}) {
        for (const char* faults : {"", "partial-write late-end", "slow-write odd-end",
                                   "no-line-end", "odd-end no-line-end late-end"}) {
            SCOPED_TRACE(std::string(address) + ' ' + faults);
            if (*address == 'U' && *faults == 's') {
                continue;  // Over USB half a transfer is lost.
            }
            visa.SetFaults(faults);
            Connect(address);
            server->Arb()->DownloadIQ("lines", codes, {}, 0);
            EXPECT_EQ(server->Instrument()->ReadError().number, 0);
            EXPECT_EQ(server->Readback()->ReadBack("lines").codes.crc32, CodesCrc32(codes));
            std::vector<std::int16_t> back(1000);
            server->ScpiAccess()->ReadCodes("lines", StoredKind::Codes, 5, back);
            EXPECT_EQ(back, std::vector<std::int16_t>(1000, 0x0A0A));
            EXPECT_TRUE(server->Arb()->SelectedArbFile().empty());
            server.reset();
            const auto trace = visa.TakeTrace();
            const bool isStream = std::string(address).find("ASRL") != std::string::npos ||
                                  std::string(address).ends_with("SOCKET");
            EXPECT_EQ(std::ranges::count(trace, "end behind 200035 bytes, the last is 10"),
                      isStream ? 0 : 1);
            for (const std::string& event : trace) {
                EXPECT_TRUE(!event.starts_with("end") || event.ends_with("the last is 10"))
                    << event;
            }
            if (std::string(faults).find("late-end") == std::string::npos) {
                EXPECT_EQ(std::ranges::count(trace, "clear"), 0);
            }
        }
    }
}

// Line ends all over, in parts of several transfers.
TEST_F(VisaTransportTest, AssertsTheEndWithTheLastByteOfTheLastPartAlone) {
    const std::vector<std::byte> bytes(2 * VisaSession::MostBytes + 3, std::byte{'\n'});
    const auto transport = Registry().Open(Gpib, {milliseconds(20000), milliseconds(20000)});
    for (const char* faults : {"", "partial-write", "slow-write"}) {
        visa.SetFaults(faults);
        visa.TakeTrace();
        transport->Send(bytes, MessagePart::Inner);
        EXPECT_TRUE(visa.TakeTrace().empty()) << faults;
        transport->Send(bytes, MessagePart::Last);
        EXPECT_EQ(visa.TakeTrace(), std::vector{"end behind " + std::to_string(2 * bytes.size()) +
                                                " bytes, the last is 10"})
            << faults;
    }
}

TEST_F(VisaTransportTest, ReturnsToLocalByTheInterfacesOwnMeansOrByAMessage) {
    Connect(Gpib);
    visa.TakeTrace();
    server->Instrument()->IO()->ReturnToLocal();
    EXPECT_EQ(visa.TakeTrace(), std::vector<std::string>{"remote control 6"});
    Connect("TCPIP0::bench::hislip0");
    EXPECT_EQ(server->Instrument()->IO()->ConnectionKind(), "LAN");
    visa.TakeTrace();
    server->Instrument()->IO()->ReturnToLocal();
    EXPECT_EQ(visa.TakeTrace(), std::vector<std::string>{"end behind 13 bytes, the last is 10"});
    // One that was only asked something is left alone, too.
    Connect(Gpib);
    server.reset();
    EXPECT_NE(std::ranges::count(visa.TakeTrace(), "remote control 6"), 0);
}

// A message makes an instrument at such an interface forget the reply that wasn't read.
TEST_F(VisaTransportTest, AsksNothingBeforeTheReplyThatMayNeverCome) {
    Connect(Gpib);
    ScpiInstrument& instrument = *server->ScpiAccess();
    EXPECT_EQ(instrument.Ask("FREQ?"), "1.000000000E+09");
    EXPECT_NE(DescriptionOf([&] { return instrument.Ask("NONSENSE?"); }).find("-113"),
              std::string::npos);
    server->Arb()->DownloadIQ("one", codes, {}, 0);
    const auto memory = instrument.Catalog();
    ASSERT_TRUE(memory);
    EXPECT_NE(FindStored(*memory, "one"), nullptr);
}

TEST_F(VisaTransportTest, ASerialSessionIsASerialLine) {
    Connect("visa://ASRL1::INSTR?baud=115200&stop=2");
    const auto session = server->Instrument()->IO();
    EXPECT_EQ(session->ConnectionKind(), "RS-232");
    ASSERT_NE(session->Serial(), nullptr);
    EXPECT_EQ(session->Serial()->BaudRate(), 115200);
    EXPECT_EQ(session->Serial()->StopBits(), 3);
    Connect(Gpib);
    EXPECT_EQ(server->Instrument()->IO()->Serial(), nullptr);
    EXPECT_EQ(server->Instrument()->IO()->ConnectionKind(), "GPIB");
}

TEST_F(VisaTransportTest, ClearsTheInstrumentBehindABrokenTransfer) {
    Connect(Gpib);
    LoseTheWillToWait();
    visa.SetFaults("stuck-write");
    EXPECT_EQ(DescriptionOf([&] { server->Arb()->DownloadIQ("n", codes, {}, 0); }),
              "The instrument at visa://GPIB0::19::INSTR took no data for 0.2 s.");
    ExpectCleared();
    visa.SetFaults("");
    Connect("USB0::1::2::3");
    visa.SetFaults("slow-write");
    EXPECT_NE(DescriptionOf([&] { server->Arb()->DownloadIQ("n", codes, {}, 0); }), "no error");
    ExpectCleared();
    visa.SetFaults("");
    Connect(Gpib);
    LoseTheWillToWait();
    visa.Device().ActiveFaults().Switch("never-answer");
    EXPECT_EQ(DescriptionOf([&] { server->Instrument()->ReadError(); }),
              "The instrument at visa://GPIB0::19::INSTR did not answer within 0.2 s.");
    ExpectCleared();
}

TEST_F(VisaTransportTest, AWaitEndsWhenTheUserWantsItTo) {
    class Impatience final : public WaitWatcher {
     public:
        int patience = 2;
        void Waiting() override {
            if (--patience < 0) {
                throw CancelError();
            }
        }
    } user;
    TimeOuts timeOuts{milliseconds(60000), milliseconds(60000)};
    timeOuts.watcher = &user;
    const auto start = steady_clock::now();
    for (const char* hanging : {"hang", "stuck-write"}) {
        visa.SetFaults(hanging);
        user.patience = 2;
        EXPECT_EQ(ErrorNumberOf([&] { return OpenInstrument(Registry(), Gpib, timeOuts); }), 1001);
    }
    EXPECT_LT(steady_clock::now() - start, milliseconds(30000));
    ExpectCleared();
}

TEST_F(VisaTransportTest, SaysWhatToDoWhenAnInstrumentCannotBeOpened) {
    struct {
        const char* faults;
        const char* address;
        const char* says;
    } const cases[] = {
        {"", "visa://GPIB0::20::INSTR", "no instrument listens at this GPIB address. Check"},
        {"", "visa://nonsense", "VISA does not take this as the name of a resource."},
        {"locked", "visa://GPIB0::19", "another program has locked the instrument. Close"},
        {"forbidden", "visa://GPIB0::19", "you may not use this device. Let"},
        {"absent", "visa://GPIB0::19", "VISA finds no such instrument. Check"},
        {"hang", "visa://GPIB0::19", "no answer within 0.2 s."},
    };
    for (const auto& one : cases) {
        visa.SetFaults(one.faults);
        const auto start = steady_clock::now();
        const bool hangs = std::string(one.faults) == "hang";
        const std::string reason =
            Hindrance(one.address, BenchVisaLibrary::File(), milliseconds(hangs ? 200 : 20000));
        EXPECT_TRUE(reason.starts_with(one.says)) << reason;
        EXPECT_LT(steady_clock::now() - start, milliseconds(30000));
    }
    const TemporaryFolder folder;
    EXPECT_EQ(Hindrance("visa://GPIB0::19", folder.PathOf("absent")),
              "there is no VISA library \"" + folder.PathOf("absent") +
                  "\". Give the whole path of its file.");
    // Of a library whose pointers have 32 bits; for Windows it is none at all.
    std::string other(
        "\x7f"
        "ELF\x01\x01\x01");
    other.resize(1000);
    const std::string file = folder.Write("other.dll", other);
    if (sizeof(void*) == 8) {
        EXPECT_EQ(Hindrance("visa://GPIB0::19", file),
                  "the VISA library " + file +
                      " is not for 64-bit programs. Install the 64-bit VISA of the interface's "
                      "maker.");
    }
}

TEST_F(VisaTransportTest, IsSearchedBesideTheOthersAndDeadEntriesCostNothing) {
    const std::string library = BenchVisaLibrary::File();
    const auto addresses = VisaAddresses(library, milliseconds(20000));
    EXPECT_EQ(addresses,
              (std::vector<std::string>{"visa://GPIB0::19::INSTR", "visa://GPIB0::20::INSTR"}));
    EXPECT_EQ(DescriptionOf([&] { return VisaAddresses("absent", milliseconds(20000)); }),
              "VISA can't be searched: there is no VISA library \"absent\". Give the whole path of "
              "its file.");
    const TimeOuts timeOuts{milliseconds(20000), milliseconds(20000)};
    const auto found = FindInstruments(Registry(), PlacesAt(addresses), timeOuts, false);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].address, "visa://GPIB0::19::INSTR");
    EXPECT_EQ(found[0].model, "M7718C");
    EXPECT_EQ(found[0].serialNumber, visa.Device().Settings().serialNumber);
    EXPECT_EQ(found[0].firmwareRevision, "B.03.40");
}

}  // namespace
}  // namespace krv::tests
