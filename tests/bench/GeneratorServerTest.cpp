#include "bench/instrument/GeneratorServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "common/Error.h"
#include "tests/support/RunningGenerator.h"

namespace krv::bench {
namespace {

using testing::RunningGenerator;

// A client that knows nothing of the server's: text out, lines in.
class RawClient {
 public:
    explicit RawClient(const RunningGenerator& generator) {
        server::TransportRegistry registry;
        server::AddTcpTransport(registry);
        m_transport =
            registry.Open(generator.Address(), {std::chrono::seconds(5), std::chrono::seconds(5)});
    }
    void Send(const std::string& text) { m_transport->Send(std::as_bytes(std::span(text))); }
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
    std::unique_ptr<server::Transport> m_transport;
};

TEST(GeneratorServer, ServesSeveralClientsWithOneInstrument) {
    const RunningGenerator generator;
    RawClient one(generator);
    RawClient two(generator);
    one.Send("ARB:DATA:IQ shared,#14ab");
    EXPECT_EQ(two.Ask("ARB:CAT?"), "0,67108862");
    one.Send("cd\r\n");
    EXPECT_EQ(one.Ask("*OPC?"), "1");
    EXPECT_EQ(two.Ask("ARB:SIZE? shared"), "2,0,0");
    two.Send("*IDN?\n*OPC?;*OPC?\n");
    EXPECT_EQ(two.ReadLine(), "Corvane,M7718C,US00000001,B.03.40");
    EXPECT_EQ(two.ReadLine(), "1;1");
}

TEST(GeneratorServer, ForgetsAClientThatVanishes) {
    const RunningGenerator generator;
    {
        RawClient vanishing(generator);
        vanishing.Send("ARB:DATA:IQ half,#9100000000" + std::string(100'000, 'x'));
    }
    RawClient next(generator);
    std::string free;
    for (int tries = 0; tries < 200 && free != "67108864"; ++tries) {
        free = next.Ask("ARB:MEM:FREE?");
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_EQ(free, "67108864");
}

TEST(GeneratorServer, StopsAtOnceWithClientsConnected) {
    auto generator =
        std::make_unique<RunningGenerator>(GeneratorSettings{.faults = {"delay=60000"}});
    RawClient waiting(*generator);
    waiting.Send("*IDN?\n");
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const auto start = std::chrono::steady_clock::now();
    generator.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    EXPECT_THROW(waiting.ReadLine(), Error);
}

TEST(GeneratorServer, SaysThatAPortIsTaken) {
    const RunningGenerator generator;
    try {
        GeneratorServer second(GeneratorSettings{}, generator.Port());
        FAIL() << "the port was shared";
    } catch (const Error& refusal) {
        EXPECT_NE(refusal.Description().find(std::to_string(generator.Port())), std::string::npos);
    }
}

}  // namespace
}  // namespace krv::bench
