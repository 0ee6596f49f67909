// The serial transport over a pair of pseudo-terminals, with a simulated generator at the other
// end.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "common/Crc32.h"
#include "simulator/commands/ClientLink.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace suite;

using std::chrono::milliseconds;

// A generator on a serial line.
class SerialGenerator {
 public:
    SerialGenerator() : m_line(::posix_openpt(O_RDWR | O_NOCTTY)) {
        if (m_line < 0 || ::grantpt(m_line) != 0 || ::unlockpt(m_line) != 0) {
            throw std::runtime_error("no pseudo-terminals");
        }
        m_device = ::ptsname(m_line);
        m_thread = std::thread([this] { Serve(); });
    }
    ~SerialGenerator() { PullTheCable(); }
    SerialGenerator(const SerialGenerator&) = delete;
    SerialGenerator& operator=(const SerialGenerator&) = delete;

    [[nodiscard]] std::string Address() const { return "serial://" + m_device; }
    [[nodiscard]] simulator::Generator& Device() { return *m_generator; }
    void StopListening() { m_listening = false; }
    void PullTheCable() {
        if (m_thread.joinable()) {
            m_running = false;
            m_thread.join();
            ::close(m_line);
        }
    }

 private:
    void Serve() {
        simulator::ClientLink link(m_generator);
        std::array<std::byte, 512> buffer{};
        while (m_running) {
            pollfd line{m_line, POLLIN, 0};
            if (!m_listening || ::poll(&line, 1, 20) <= 0 || (line.revents & POLLIN) == 0) {
                std::this_thread::sleep_for(milliseconds(1));
                continue;
            }
            const ssize_t count = ::read(m_line, buffer.data(), buffer.size());
            if (count > 0) {
                link.TakeIn(std::span(buffer).first(static_cast<std::size_t>(count)));
            }
            while (const auto reply = link.NextReply()) {
                EXPECT_EQ(::write(m_line, reply->text.data(), reply->text.size()),
                          static_cast<ssize_t>(reply->text.size()));
            }
        }
    }

    std::shared_ptr<simulator::Generator> m_generator =
        std::make_shared<simulator::Generator>(simulator::GeneratorSettings{});
    int m_line;
    std::string m_device;
    std::atomic<bool> m_running = true;
    std::atomic<bool> m_listening = true;
    std::thread m_thread;
};

class SerialTransportTest : public ::testing::Test {
 protected:
    void Connect(const std::string& settings = "") {
        constexpr milliseconds timeOut{20000};
        TransportRegistry registry;
        AddSerialTransport(registry);
        server = std::make_unique<ScpiInstrumentServer>(registry, TimeOuts{timeOut, timeOut});
        server->Connect(generator.Address() + settings);
    }
    // For a time-out that is to strike.
    void LoseTheWillToWait() const {
        server->ScpiAccess()->SetTimeOuts({milliseconds(300), milliseconds(300)});
    }
    std::string FailureOf(const std::function<void()>& work) {
        std::string description = DescriptionOf(work);
        const auto at = description.find(generator.Address());
        return at == std::string::npos ? description
                                       : description.replace(at, generator.Address().size(), "X");
    }

    SerialGenerator generator;
    std::unique_ptr<ScpiInstrumentServer> server;
    std::vector<std::int16_t> codes = std::vector<std::int16_t>(20'000, 0x0A0D);
};

TEST_F(SerialTransportTest, CarriesEveryByteAndTellsItsSettings) {
    Connect("?baud=115200&stop=2");
    // Every byte there is, line ends and flow-control characters among them.
    for (std::size_t index = 0; index < codes.size(); ++index) {
        codes[index] = static_cast<std::int16_t>(index * 257);
    }
    server->Arb()->DownloadIQ("serial", codes, {}, 0);
    EXPECT_EQ(server->Instrument()->ReadError().number, 0);
    EXPECT_EQ(server->Readback()->ReadBack("serial").codes.crc32, CodesCrc32(codes));
    const auto session = server->Instrument()->IO();
    EXPECT_EQ(session->ConnectionKind(), "RS-232");
    EXPECT_EQ(session->Address(), generator.Address() + "?baud=115200&stop=2");
    ASSERT_NE(session->Serial(), nullptr);
    EXPECT_EQ(session->Serial()->BaudRate(), 115200);
    EXPECT_EQ(session->Serial()->DataBits(), 8);
    EXPECT_EQ(session->Serial()->StopBits(), 3);
    server->Disconnect();
    EXPECT_EQ(session->Serial(), nullptr);
}

TEST_F(SerialTransportTest, GivesUpWhereNothingComesOrGoes) {
    Connect();
    LoseTheWillToWait();
    generator.Device().ActiveFaults().Switch("never-answer");
    EXPECT_EQ(FailureOf([&] { server->Instrument()->ReadError(); }),
              "The instrument at X did not answer within 0.3 s.");
    EXPECT_EQ(server->Instrument()->IO(), nullptr);
    generator.Device().ActiveFaults().Clear();
    Connect();
    LoseTheWillToWait();
    generator.StopListening();
    EXPECT_EQ(FailureOf([&] { server->Arb()->DownloadIQ("n", codes, {}, 0); }),
              "The instrument at X took no data for 0.3 s.");
    EXPECT_EQ(server->Instrument()->IO(), nullptr);
}

TEST_F(SerialTransportTest, SaysThatTheOtherSideHasGone) {
    Connect();
    generator.PullTheCable();
    EXPECT_EQ(FailureOf([&] { server->Instrument()->ReadError(); }),
              "The instrument at X closed the connection.");
    EXPECT_EQ(server->Instrument()->IO(), nullptr);
}

TEST_F(SerialTransportTest, SaysThatADeviceCannotBeUsed) {
    TransportRegistry registry;
    AddSerialTransport(registry);
    const auto open = [&](const std::string& address) {
        return FailureOf([&] { static_cast<void>(registry.Open(address, {})); });
    };
    EXPECT_EQ(open("serial:///dev/absent-line"),
              "No connection to the instrument at serial:///dev/absent-line: there is no such "
              "device.");
    EXPECT_EQ(open("serial:///dev/null").find("No connection to the instrument at "), 0U);
    EXPECT_EQ(open(generator.Address() + "?baud=12345"),
              "No connection to the instrument at X?baud=12345: the device refuses the baud rate.");
}

}  // namespace
}  // namespace krv::tests
