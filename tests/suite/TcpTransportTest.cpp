#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "simulator/server/SimulatedTransport.h"
#include "suite/scpi/ScpiConnection.h"
#include "suite/transport/Asio.h"
#include "suite/transport/Detached.h"
#include "suite/transport/Patience.h"
#include "suite/transport/TcpAddress.h"
#include "suite/transport/Transport.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace suite;

using std::chrono::milliseconds;

TransportRegistry Registry() {
    TransportRegistry registry;
    AddTcpTransport(registry);
    simulator::AddSimulatedTransport(registry);
    return registry;
}

TEST(Detached, AnExceptionEndsItsWorkAlone) {
    const auto work = std::make_shared<int>();
    RunDetached([work] { throw std::runtime_error("nobody cares"); });
    while (work.use_count() > 1) {
        std::this_thread::sleep_for(milliseconds(1));
    }
}

constexpr TimeOuts ShortTimeOuts{milliseconds(5000), milliseconds(200)};

std::unique_ptr<Transport> Open(const std::string& address) {
    return Registry().Open(address, ShortTimeOuts);
}

TEST(TransportRegistry, SaysWhatIsWrongWithAnAddress) {
    const std::string form = "; write tcp://HOST:PORT, for example tcp://192.168.0.10:5025.";
    struct {
        const char* address;
        std::string reason;
    } const cases[] = {
        {"", "it has no scheme; schemes that are known: sim://, tcp://."},
        {"127.0.0.1:5025", "it has no scheme; schemes that are known: sim://, tcp://."},
        {"gpib://5", "its scheme is not known; schemes that are: sim://, tcp://."},
        {"tpc://a:1",
         "its scheme is not known; schemes that are: sim://, tcp://. Did you mean 'tcp://'?"},
        {"tcp://", "it has no port" + form},
        {"tcp://host", "it has no port" + form},
        {"tcp://:5025", "it has no host" + form},
        {"tcp://[]:5025", "it has no host" + form},
        {"tcp://a b:5025", "its host is not a host's name" + form},
        {"tcp://::1:5025", "an IPv6 address stands in brackets" + form},
        {"tcp://host:", "its port is not a number from 1 to 65535" + form},
        {"tcp://host:0", "its port is not a number from 1 to 65535" + form},
        {"tcp://host:65536", "its port is not a number from 1 to 65535" + form},
        {"tcp://host:80/x", "its port is not a number from 1 to 65535" + form},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(DescriptionOf([&] { Open(one.address); }),
                  "The address \"" + std::string(one.address) + "\" cannot be used: " + one.reason);
    }
    EXPECT_EQ(ParseTcpAddress("[fe80::1]:80").computer, "fe80::1");
    EXPECT_EQ(ParseTcpAddress("[fe80::1]:80").Text(), "tcp://[fe80::1]:80");
}

TEST(TransportRegistry, SaysThatASimulatedModelIsNotKnown) {
    EXPECT_EQ(DescriptionOf([] { Open("sim://M1"); }),
              "No connection to the instrument at sim://M1: The model \"M1\" is not known. Known "
              "models: M7718C, M9920C, M9920D, M771XB, M771XD, KRV-B.");
}

TEST(TcpTransport, SaysThatNothingListens) {
    std::uint16_t port = 0;
    {
        const RunningGenerator gone;
        port = gone.Port();
    }
    const std::string address = "tcp://127.0.0.1:" + std::to_string(port);
    EXPECT_EQ(DescriptionOf([&] { Open(address); }),
              "No connection to the instrument at " + address +
                  ": nothing accepts connections there, or another program holds its only one.");
    // A name that is never given to a host.
    EXPECT_EQ(DescriptionOf([] {
                  Open("tcp://nowhere.invalid:5025");
              }).find("No connection to the instrument at tcp://nowhere.invalid:5025: "),
              0U);
}

TEST(TcpTransport, FindsHostsByName) {
    const RunningGenerator generator;
    const auto transport = Open("tcp://localhost:" + std::to_string(generator.Port()));
    EXPECT_EQ(transport->Kind(), "LAN");
}

TEST(TcpTransport, GivesUpOnAnInstrumentThatTakesNothing) {
    const RunningGenerator generator({.faults = {"bandwidth=1"}});
    const auto transport = Open(generator.Address());
    const std::string much(8 << 20, ' ');
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(DescriptionOf([&] {
                  transport->Send(std::as_bytes(std::span(much)), suite::MessagePart::Last);
              }),
              "The instrument at " + generator.Address() + " took no data for 0.2 s.");
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(60000));
}

TEST(TcpTransport, SaysThatAnotherProgramMayHoldTheOnlyConnection) {
    asio::io_context context;
    asio::ip::tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
    std::thread instrument([&] { static_cast<void>(acceptor.accept()); });
    const std::string address =
        "tcp://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port());
    const auto transport = Open(address);
    instrument.join();
    char byte = 0;
    EXPECT_EQ(DescriptionOf(
                  [&] { return transport->Receive(std::as_writable_bytes(std::span(&byte, 1))); }),
              "The instrument at " + address +
                  " closed the connection. Another program may hold the instrument's only "
                  "connection: close that program, then try again.");
}

// Each piece comes in time, and all of them would take as long as the instrument likes.
TEST(TcpTransport, GivesUpOnABlockThatTricklesInOrHasNoEnd) {
    const auto refusal = [](const std::string& start, milliseconds inactivity, milliseconds block) {
        asio::io_context context;
        asio::ip::tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
        std::thread instrument([&] {
            asio::ip::tcp::socket socket = acceptor.accept();
            std::error_code ended;
            asio::write(socket, asio::buffer(start.substr(0, start.find('x'))), ended);
            const std::string piece = start.substr(start.find('x'));
            for (int sent = 0; sent < 200 && !ended; ++sent) {
                std::this_thread::sleep_for(milliseconds(50));
                asio::write(socket, asio::buffer(piece), ended);
            }
        });
        const TimeOuts timeOuts{milliseconds(20000), inactivity, block};
        ScpiConnection connection(
            Registry().Open("tcp://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port()),
                            timeOuts),
            "here", timeOuts);
        const std::string text =
            DescriptionOf([&] { static_cast<void>(connection.QueryBlock("SYST:SET?")); });
        connection.Disconnect();
        instrument.join();
        return text;
    };
    const std::string tooSlow = "The instrument at here sent its data too slowly.";
    EXPECT_EQ(refusal("#3100x", milliseconds(3000), std::chrono::hours(1)), tooSlow);
    EXPECT_EQ(
        refusal("#867108864" + std::string(1000, 'x'), milliseconds(20000), milliseconds(300)),
        tooSlow);
}

// One limit at first, no more than one ahead, and for each byte its time on a slow line.
TEST(TcpTransport, IsPatientWithASlowLineAndNotWithATrickle) {
    const auto start = Patience::Clock::now();
    Patience trickle(milliseconds(30000), 100, start);
    Patience slow = trickle;
    for (int second = 1; second <= 31; ++second) {
        const auto now = start + std::chrono::seconds(second);
        EXPECT_EQ(trickle.IsOver(now), second == 31) << second;
        trickle.Moved(1, now);
    }
    for (int minute = 0; minute < 60; ++minute) {
        const auto now = start + std::chrono::seconds(25 + 25 * minute);
        EXPECT_FALSE(slow.IsOver(now)) << minute;
        slow.Moved(25 * 120, now);
        EXPECT_EQ(slow.End(), now + milliseconds(30000));
    }
}

}  // namespace
}  // namespace krv::tests
