#include "waveform/run/WaveformVerification.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/Crc32.h"
#include "tests/waveform/RunFixture.h"
#include "waveform/run/WaveformTransfer.h"

namespace krv::tests {

using namespace waveform;
namespace {

// An instrument that reports what the double received, or something else.
class Readback final : public ports::WaveformReadback {
 public:
    explicit Readback(FakeServer& server) : m_server(server) {}

    std::function<void(ports::StoredWaveform&)> Change = [](ports::StoredWaveform&) {};
    std::string Asked;

    ports::StoredWaveform ReadBack(const std::string& name) override {
        Asked = name;
        const Codes& codes = m_server.Interleaved.empty() ? m_server.ICodes : m_server.Interleaved;
        ports::StoredWaveform stored{SumUp(codes), SumUp(m_server.QCodes), SumUp(m_server.Markers)};
        Change(stored);
        return stored;
    }

 private:
    FakeServer& m_server;
};

class WaveformVerificationTest : public RunFixture {
 protected:
    WaveformVerificationTest() {
        codes = {.i = Shared({0x3231, 0x3433}), .q = Shared({0x3231}), .markers = Shared({1, 2})};
        plan.verifyWith = readback;
    }
    // Transfers, and what is said of the verification.
    std::string Transfer(const std::string& model, bool useQ) {
        Connect(model);
        plan.useQ = useQ;
        codes.isNewModel = plan.instrument.isNewModel;
        server->ICodes = server->QCodes = server->Interleaved = server->Markers = {};
        record = {};
        WaveformTransfer transfer(plan, services, codes, record);
        succeeded = transfer.CheckDestinationAndTransfer();
        EXPECT_EQ(record.verified, succeeded);
        return transfer.VerifiedText();
    }

    std::shared_ptr<Readback> readback = std::make_shared<Readback>(*server);
    bool succeeded = false;
};

TEST_F(WaveformVerificationTest, SaysWhatWasVerified) {
    // The sums were computed apart, over the codes as little-endian bytes.
    EXPECT_EQ(Transfer("M7714B", false),
              "Verified in the instrument:\r\nI data: 2 codes, CRC-32 9BE3E0A3");
    EXPECT_EQ(Transfer("M7714B", true),
              "Verified in the instrument:\r\nI data: 2 codes, CRC-32 9BE3E0A3\r\n"
              "Q data: 1 codes, CRC-32 4F5344CD");
    EXPECT_EQ(Transfer("M9920C", false),
              "Verified in the instrument:\r\nI and Q data: 2 codes, CRC-32 9BE3E0A3\r\n"
              "Markers: 2 codes, CRC-32 ABCEDAFB");
    EXPECT_EQ(Transfer("M9920C", true).find("\r\nI and Q data: 4 codes, CRC-32 "), 27U);
    EXPECT_EQ(readback->Asked, "WAVE");
    EXPECT_EQ(Of("["), Lines{});
}

TEST_F(WaveformVerificationTest, FailsWhereTheInstrumentHoldsSomethingElse) {
    readback->Change = [](ports::StoredWaveform& stored) {
        stored.codes.crc32 = 0xAB;
        stored.markers = {};
    };
    EXPECT_EQ(Transfer("M9920C", false), "");
    EXPECT_FALSE(succeeded);
    EXPECT_EQ(Of("["), Lines{"[!] Download: The waveform in the instrument is not the one that was "
                             "sent. | I and Q data: 2 codes, CRC-32 9BE3E0A3 sent; 2 codes, CRC-32 "
                             "000000AB found | Markers: 2 codes, CRC-32 ABCEDAFB sent; 0 codes, "
                             "CRC-32 00000000 found (OK)"});
    readback->Change = [](ports::StoredWaveform&) {
        throw Error(ErrorNumber::Unspecified, "Connection lost");
    };
    journal.clear();
    EXPECT_EQ(Transfer("M9920C", false), "");
    EXPECT_FALSE(succeeded);
    EXPECT_EQ(Of("["), Lines{"[!] Download: Connection lost (OK)"});
    EXPECT_EQ(Of("row2").back(), "row2 \"\"");
}

TEST_F(WaveformVerificationTest, AsksNothingAfterAFailure) {
    server->ErrorsAfterTransfer = {{-310, "System error"}};
    WaveformTransfer failing(plan, services, codes, record);
    EXPECT_FALSE(failing.CheckDestinationAndTransfer());
    EXPECT_EQ(record.verified, std::nullopt);
    EXPECT_EQ(readback->Asked, "");
}

}  // namespace
}  // namespace krv::tests
