#include "simulator/server/GeneratorServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "suite/transport/Asio.h"
#include "suite/transport/Transport.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace simulator;

// A client that knows nothing of the server's: text out, lines in.
class RawClient {
 public:
    explicit RawClient(const RunningGenerator& generator) {
        suite::TransportRegistry registry;
        suite::AddTcpTransport(registry);
        m_transport = registry.Open(generator.Address(),
                                    {std::chrono::seconds(20), std::chrono::seconds(20)});
    }
    void Send(const std::string& text) {
        m_transport->Send(std::as_bytes(std::span(text)), suite::MessagePart::Last);
    }
    std::string ReadLine() {
        std::string line;
        for (char character = 0; character != '\n';) {
            m_transport->Receive(std::as_writable_bytes(std::span(&character, 1)));
            line += character;
        }
        line.pop_back();
        return line;
    }
    std::string Ask(const std::string& message) {
        Send(message + '\n');
        return ReadLine();
    }

 private:
    std::unique_ptr<suite::Transport> m_transport;
};

// As a client does that pipes a file into a socket and reads until the end.
TEST(GeneratorServer, AnswersAClientThatSendsAllAtOnceAndStopsTalking) {
    const RunningGenerator generator;
    asio::ip::tcp::iostream client("127.0.0.1", std::to_string(generator.Port()));
    client << "*IDN?\r\n\r\n*OPC?;*TST?\nARB:DATA:IQ a,#14\n;\"\n;SIZE? a;*OPC?\nSYST:ERR?\r\n"
           << "ARB:DATA:IQ b,#14\n\n\n\n\n*IDN" << std::flush;
    client.socket().shutdown(asio::ip::tcp::socket::shutdown_send);
    std::string replies;
    for (std::string line; std::getline(client, line);) {
        replies += line + '|';
    }
    // SIZE? follows on from DATA, where it isn't known.
    EXPECT_EQ(replies, "Corvane,M7718C,US00000001,B.03.40|1;0|-113,\"Undefined header;SIZE?\"|");
    RawClient next(generator);
    EXPECT_EQ(next.Ask("ARB:SIZE? a;SIZE? b;:SYST:ERR?"), "2,0,0;2,0,0;0,\"No error\"");
}

TEST(GeneratorServer, KeepsManyClientsApart) {
    const RunningGenerator generator;
    const auto work = [&generator](int number) {
        const std::string name = "w" + std::to_string(number);
        std::string codes;
        for (int index = 0; index < 5000; ++index) {
            codes += static_cast<char>('a' + number);
        }
        std::string answers;
        for (int round = 0; round < 10; ++round) {
            RawClient vanishing(generator);
            vanishing.Send("ARB:DATA:IQ gone,#45000" +
                           codes.substr(static_cast<std::size_t>(round) * 7));
            RawClient client(generator);
            client.Send("ARB:DATA:IQ " + name + ",#45000" + codes.substr(0, 1234));
            client.Send(codes.substr(1234));
            answers = client.Ask(";*OPC?\nARB:SIZE? " + name);
            answers += client.ReadLine();
        }
        return answers;
    };
    std::vector<std::future<std::string>> clients;
    for (int number = 0; number < 8; ++number) {
        clients.push_back(std::async(std::launch::async, work, number));
    }
    for (auto& client : clients) {
        EXPECT_EQ(client.get(), "12500,0,0");
    }
    RawClient last(generator);
    std::string state;
    for (int tries = 0; tries < 400 && !state.starts_with("20000,67088864,"); ++tries) {
        state = last.Ask("ARB:CAT?");
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(state.find("20000,67088864,\"w0,IQ,2500\",\"w1,IQ,2500\""), 0U) << state;
    EXPECT_EQ(last.Ask("SYST:ERR:COUN?"), "0");
}

// Such a client sends nothing more, or next to nothing, or doesn't take its replies.
TEST(GeneratorServer, GivesMemoryBackThatAClientHoldsTooLong) {
    const RunningGenerator generator(
        GeneratorSettings{.memoryPoints = 100, .stallLimit = std::chrono::milliseconds(1000)});
    RawClient other(generator);
    std::string replies = "HCOP\n";
    for (int count = 0; count < 130; ++count) {
        replies += "MMEM:DATA? \"DISPLAY.BMP\"\n";
    }
    for (const auto& [start, trickle] :
         {std::pair<std::string, std::string>{"", ""}, {"", "a"}, {replies, ""}}) {
        bool wasTaken = false;
        std::string free;
        // A busy machine may look too late.
        for (int times = 0; times < 5 && !wasTaken; ++times) {
            RawClient stalling(generator);
            stalling.Send(start + "ARB:DATA:IQ gone,#3180abc");
            for (int tries = 0; tries < 200 && !(wasTaken && free == "100"); ++tries) {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                TrapErrors([&, &more = trickle] { stalling.Send(more); });
                free = other.Ask("ARB:MEM:FREE?");
                wasTaken = wasTaken || free == "10";
            }
        }
        EXPECT_TRUE(wasTaken);
        EXPECT_EQ(free, "100");
    }
}

TEST(GeneratorServer, StopsAtOnceWithClientsConnected) {
    auto generator =
        std::make_unique<RunningGenerator>(GeneratorSettings{.faults = {"delay=60000"}});
    RawClient waiting(*generator);
    waiting.Send("*IDN?\n");
    while (generator->Device().BytesTakenIn() < 6) {
        std::this_thread::yield();
    }
    const auto start = std::chrono::steady_clock::now();
    generator.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_THROW(waiting.ReadLine(), Error);
}

}  // namespace
}  // namespace krv::tests
