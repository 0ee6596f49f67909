// The instrument server against the simulated generator, in process and over TCP.
#include "suite/scpi/ScpiInstrumentServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "common/Crc32.h"
#include "common/Error.h"
#include "simulator/server/GeneratorServer.h"
#include "simulator/server/SimulatedTransport.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

using Codes = std::vector<std::int16_t>;
using std::chrono::milliseconds;

enum class Way { InProcess, Tcp };

Codes SomeCodes(std::size_t count, int seed) {
    Codes codes(count);
    for (std::size_t index = 0; index < count; ++index) {
        codes[index] = static_cast<std::int16_t>(index * 40503 + static_cast<std::size_t>(seed));
    }
    return codes;
}

ports::StoredArray Held(const Codes& codes) {
    return {codes.size(), CodesCrc32(codes)};
}

class ScpiInstrumentServerTest : public ::testing::TestWithParam<Way> {
 protected:
    ScpiInstrumentServerTest() { settings.storeFolder = folder.Path(); }

    // Switches the generator on with these faults and connects to it.
    void SwitchOn(const std::vector<std::string>& faults = {}) {
        settings.faults = faults;
        TransportRegistry registry;
        std::string address = "sim://" + settings.model;
        if (GetParam() == Way::Tcp) {
            tcp = std::make_unique<RunningGenerator>(settings);
            address = tcp->Address();
            AddTcpTransport(registry);
        } else {
            simulator::AddSimulatedTransport(registry, settings);
        }
        server = std::make_unique<ScpiInstrumentServer>(registry,
                                                        TimeOuts{milliseconds(20000), timeOut});
        m_address = address;
        server->Connect(address);
    }
    std::string FailureOf(const std::function<void()>& work) {
        const auto start = std::chrono::steady_clock::now();
        std::string description = DescriptionOf(work);
        EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(15000)) << description;
        const auto at = description.find(m_address);
        return at == std::string::npos ? description
                                       : description.replace(at, m_address.size(), "X");
    }
    // The errors in the instrument's queue, as "number text" lines.
    std::string Errors() {
        std::string errors;
        for (auto error = server->Instrument()->ReadError(); error.number != 0;
             error = server->Instrument()->ReadError()) {
            errors += std::to_string(error.number) + ' ' + error.message + '\n';
        }
        return errors;
    }
    bool IsUsable() {
        return server->Instrument()->IO() != nullptr && server->Instrument()->Model() == "M7718C";
    }

    // Long, so that a busy machine is no fault; short where a test waits for it.
    milliseconds timeOut{20000};
    TemporaryFolder folder;
    simulator::GeneratorSettings settings;
    std::unique_ptr<RunningGenerator> tcp;
    std::unique_ptr<ScpiInstrumentServer> server;

 private:
    std::string m_address;
};

TEST_P(ScpiInstrumentServerTest, CapturesAStateAndPutsItBack) {
    SwitchOn();
    const auto instrument = server->Instrument();
    server->Arb()->DownloadIQ("Sine", SomeCodes(4, 1), {}, 0);
    const Value before = instrument->CaptureState();
    ASSERT_TRUE(std::holds_alternative<ByteArray>(before));
    instrument->RestoreState(before);
    EXPECT_EQ(instrument->CaptureState(), before);

    const auto refusal = [&](const Value& state) {
        return DescriptionOf([&] { instrument->RestoreState(state); });
    };
    ByteArray altered = std::get<ByteArray>(before);
    altered.bytes.back() ^= std::byte{1};
    EXPECT_EQ(
        refusal(altered),
        "The instrument refused the state: -161, \"Invalid block data;The saved properties have "
        "been altered: their checksum doesn't fit.\".");
    EXPECT_EQ(refusal(std::string("state")),
              "This is not a state that an instrument has reported.");
    EXPECT_EQ(refusal(ByteArray{std::vector<std::byte>(std::size_t{2} << 20)}).substr(0, 34),
              "The instrument refused the state: ")
        << "a state may be as large as what can be captured";
    EXPECT_EQ(instrument->ReadError().number, 0);
    EXPECT_EQ(instrument->CaptureState(), before);
}

TEST_P(ScpiInstrumentServerTest, IdentifiesTheInstrument) {
    settings.options = {"R2X", "001"};
    settings.serialNumber = "US7";
    SwitchOn();
    const auto instrument = server->Instrument();
    EXPECT_EQ(instrument->Model() + ' ' + instrument->FirmwareRevision() + ' ' +
                  instrument->SerialNumber(),
              "M7718C B.03.40 US7");
    EXPECT_EQ(server->InstalledOptions(), settings.options);
    EXPECT_TRUE(server->Arb()->HasDualArbOption());
    EXPECT_FALSE(server->Arb()->ArbFileSelected());
    const auto io = instrument->IO();
    EXPECT_EQ(io->ConnectionKind(), GetParam() == Way::Tcp ? "LAN" : "Simulated");
    EXPECT_EQ(io->Serial(), nullptr);
    io->ReturnToLocal();
    EXPECT_EQ(Errors(), "");
    settings.options = {"001"};
    SwitchOn();
    EXPECT_FALSE(server->Arb()->HasDualArbOption());
}

TEST_P(ScpiInstrumentServerTest, DownloadsEveryCodeOfEachKindAndReadsItBack) {
    SwitchOn();
    const auto readback = server->Readback();
    for (const std::size_t count : {1U, 2U, 1000U, 262147U}) {
        const Codes one = SomeCodes(count, 1);
        const Codes two = SomeCodes(count + 1, 77);
        server->Arb()->DownloadIQ("separate", one, two, 0);
        server->Arb()->DownloadIQ("only i", two, {}, 0);
        server->Arb()->DownloadInterleaved("both", two, 0);
        server->Arb()->DownloadMarkers("both", one, 0);
        EXPECT_EQ(Errors(), "");
        using Stored = ports::StoredWaveform;
        EXPECT_EQ(readback->ReadBack("separate"), (Stored{Held(one), Held(two), {}})) << count;
        EXPECT_EQ(readback->ReadBack("only i"), (Stored{Held(two), {}, {}})) << count;
        EXPECT_EQ(readback->ReadBack("both"), (Stored{Held(two), {}, Held(one)})) << count;
        EXPECT_EQ(folder.Names().size(), 5U);
    }
    EXPECT_EQ(FailureOf([&] { static_cast<void>(readback->ReadBack("absent")); }),
              "The instrument does not tell what it holds as \"absent\": -256 File name not "
              "found;absent.");
    EXPECT_TRUE(IsUsable());
}

TEST_P(ScpiInstrumentServerTest, StaysUnconnectedWhenRepliesDoNotCome) {
    timeOut = milliseconds(200);
    for (const char* fault : {"never-answer", "truncate-reply", "delay=60000"}) {
        const std::string refusal = FailureOf([&] { SwitchOn({fault}); });
        EXPECT_TRUE(refusal.starts_with("The instrument at X did not answer within 0.2 s."))
            << fault << ": " << refusal;
        // Over TCP, where another client may be in the way.
        EXPECT_EQ(refusal.find("Another program may hold") != std::string::npos,
                  GetParam() == Way::Tcp && fault != std::string_view("truncate-reply"))
            << refusal;
        EXPECT_EQ(server->Instrument()->IO(), nullptr) << fault;
    }
}

std::string WayName(const ::testing::TestParamInfo<Way>& way) {
    return way.param == Way::Tcp ? "Tcp" : "InProcess";
}

INSTANTIATE_TEST_SUITE_P(Ways, ScpiInstrumentServerTest,
                         ::testing::Values(Way::InProcess, Way::Tcp), WayName);

}  // namespace
}  // namespace krv::tests
