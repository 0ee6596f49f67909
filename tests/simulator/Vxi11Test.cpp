#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "simulator/vxi11/PortMapper.h"
#include "simulator/vxi11/RecordReader.h"
#include "simulator/vxi11/Vxi11Conversation.h"
#include "suite/transport/Asio.h"
#include "tests/support/RunningGenerator.h"

namespace krv::tests {
namespace {

using namespace simulator;

constexpr std::uint32_t Core = 0x0607AF;
constexpr std::uint32_t Abort = 0x0607B0;
constexpr std::uint32_t Mapper = 100000;

enum Flag : std::uint32_t { Wait = 1, End = 8, Character = 0x80 };

// A client: calls out, results in as numbers, with text behind them where there is some.
class Vxi11Client {
 public:
    // Carries a message there and its reply back.
    using Road = std::function<std::string(const std::string& message)>;
    explicit Vxi11Client(Road road) : m_road(std::move(road)) {}

    std::string Call(std::uint32_t program, std::uint32_t version, std::uint32_t procedure,
                     const XdrWriter& arguments, std::size_t numbers = 1, bool hasText = false) {
        XdrWriter message;
        message.Number(++m_id).Number(0).Number(2).Number(program).Number(version);
        message.Number(procedure).Number(1).Opaque("whoever").Number(0).Opaque({});
        message.Written(arguments);
        const std::string reply = m_road(message.Bytes());
        XdrReader reader(std::as_bytes(std::span(reply)));
        EXPECT_EQ(reader.Number(), m_id);
        for (const std::uint32_t expected : {1U, 0U, 0U, 0U}) {
            EXPECT_EQ(reader.Number(), expected);
        }
        if (const std::uint32_t status = reader.Number(); status != 0) {
            return "status " + std::to_string(status);
        }
        std::string results;
        for (std::size_t count = 0; count < numbers; ++count) {
            results += (count == 0 ? "" : " ") + std::to_string(reader.Number());
        }
        return hasText ? results + ' ' + std::string(reader.Text(100000)) : results;
    }
    // The link's number, or 0 and the error.
    std::string Open(const std::string& device = "inst0", bool locks = false) {
        return Call(Core, 1, 10, XdrWriter().Number(5).Number(locks).Number(30).Opaque(device), 2);
    }
    std::string Write(std::uint32_t link, const std::string& text, std::uint32_t flags = End) {
        return Call(Core, 1, 11,
                    XdrWriter().Number(link).Number(100).Number(30).Number(flags).Opaque(text), 2);
    }
    std::string Read(std::uint32_t link, std::uint32_t most = 1000, std::uint32_t flags = 0,
                     char character = 0, std::uint32_t timeOut = 30) {
        const auto code = static_cast<std::uint32_t>(character);
        return Call(
            Core, 1, 12,
            XdrWriter().Number(link).Number(most).Number(timeOut).Number(30).Number(flags).Number(
                code),
            2, true);
    }
    // A call with the usual parameters.
    std::string Do(std::uint32_t procedure, std::uint32_t link, std::size_t numbers = 1) {
        return Call(Core, 1, procedure, XdrWriter().Number(link).Number(0).Number(30).Number(30),
                    numbers);
    }

 private:
    Road m_road;
    std::uint32_t m_id = 0;
};

class Vxi11 : public ::testing::Test {
 protected:
    std::shared_ptr<Generator> generator = std::make_shared<Generator>(GeneratorSettings{});
    std::shared_ptr<Vxi11Links> links = std::make_shared<Vxi11Links>();
    std::optional<Vxi11Conversation> connection{std::in_place, generator, links,
                                                std::uint16_t{1024}, "a client"};
    Vxi11Conversation otherConnection{generator, links, 1024, "another client"};
    Vxi11Client client = On(*connection);
    Vxi11Client other = On(otherConnection);

    static Vxi11Client On(Vxi11Conversation& conversation) {
        return Vxi11Client([&conversation](const std::string& message) {
            const auto bytes = std::as_bytes(std::span(message));
            CallReply reply;
            for (int waited = 0;
                 (reply = conversation.Answer(bytes, std::chrono::milliseconds(waited))).isWaiting;
                 ++waited) {
            }
            return reply.message;
        });
    }
};

TEST_F(Vxi11, AMessageEndsAtItsLineFeedOrWithItsCall) {
    ASSERT_EQ(client.Open(), "0 1");
    const std::string idn = "Corvane,M7718C,US00000001,B.03.40\n";
    for (const auto& [text, flags] :
         {std::pair<const char*, std::uint32_t>{"*IDN?", End}, {"*IDN?\n", End}, {"*IDN?\n", 0U}}) {
        client.Write(1, text, flags);
        EXPECT_EQ(client.Read(1), "0 4 " + idn) << text << flags;
        EXPECT_EQ(client.Read(1), "15 0 ") << "one reply a message";
    }
    EXPECT_EQ(client.Write(1, "ARB:DATA:IQ a,#14\n", 0), "0 18");
    EXPECT_EQ(client.Write(1, "\n\n\n;*ID", 0), "0 7");
    EXPECT_EQ(client.Read(1), "15 0 ");
    EXPECT_EQ(client.Write(1, "N?;:ARB:SIZE? a"), "0 15");
    EXPECT_EQ(client.Read(1), "0 4 " + idn.substr(0, idn.size() - 1) + ";2,0,0\n");
    client.Write(1, "ARB:DATA:IQ b,#14\n");
    client.Write(1, "SYST:ERR?");
    EXPECT_EQ(client.Read(1), "0 4 -161,\"Invalid block data\"\n") << "it ended in the block";
}

TEST_F(Vxi11, AReplyIsReadInPiecesWhoseReasonsAreTold) {
    ASSERT_EQ(client.Open(), "0 1");
    client.Write(1, "*IDN?");
    client.Write(1, "*OPC?");
    EXPECT_EQ(client.Do(13, 1, 2), "0 16") << "a reply waits";
    EXPECT_EQ(client.Read(1, 8, Character, ','), "0 3 Corvane,");
    EXPECT_EQ(client.Read(1, 3), "0 1 M77");
    EXPECT_EQ(client.Read(1, 24, Character, '\n'), "0 6 18C,US00000001,B.03.40\n");
}

TEST_F(Vxi11, StatusClearAndTheFrontPanelAreCallsOfTheirOwn) {
    ASSERT_EQ(client.Open(), "0 1");
    client.Write(1, "BAD");
    client.Write(1, "*IDN?");
    client.Write(1, "ARB:DATA:IQ gone,#280abc", 0);
    EXPECT_EQ(client.Do(13, 1, 2), "0 20");
    EXPECT_TRUE(connection->HoldsMemory());
    EXPECT_EQ(client.Do(15, 1), "0");
    EXPECT_FALSE(connection->HoldsMemory());
    EXPECT_EQ(client.Do(13, 1, 2), "0 4") << "errors stay";
    EXPECT_EQ(client.Read(1), "15 0 ");
    client.Write(1, "SYST:ERR:COUN?");
    EXPECT_EQ(client.Read(1), "0 4 1\n") << "a whole message after the clear";
    client.Write(1, "*CLS;:ARB:DATA:IQ a,#12\1\2;:ARB:SEL a;:TRIG:SOUR BUS;:ARB:STAT ON");
    EXPECT_TRUE(generator->IsWaiting());
    EXPECT_EQ(client.Do(14, 1), "0");
    EXPECT_FALSE(generator->IsWaiting());
    EXPECT_EQ(client.Do(14, 1), "0");
    EXPECT_EQ(client.Do(13, 1, 2), "0 4") << "the trigger was ignored";
    EXPECT_EQ(client.Do(17, 1), "0");
    EXPECT_FALSE(generator->IsRemote());
    EXPECT_EQ(client.Do(16, 1), "0");
    EXPECT_TRUE(generator->IsRemote());
}

TEST_F(Vxi11, LinksAreLimitedAndEndWithTheirConnection) {
    EXPECT_EQ(client.Open("inst1"), "3 0");
    for (std::size_t count = 1; count <= Vxi11Links::Most; ++count) {
        EXPECT_EQ(client.Open("INST0"), "0 " + std::to_string(count));
    }
    EXPECT_EQ(other.Open(), "9 0");
    EXPECT_EQ(other.Write(1, "*RST"), "4 0") << "another's link";
    EXPECT_EQ(client.Do(23, 1), "0");
    EXPECT_EQ(client.Do(23, 1), "4");
    EXPECT_EQ(other.Open(), "0 33");
    connection.reset();
    EXPECT_EQ(other.Open(), "0 34");
}

TEST_F(Vxi11, ALockedGeneratorIsForTheLinkThatHasLockedIt) {
    ASSERT_EQ(client.Open("inst0", true), "0 1");
    EXPECT_EQ(other.Open("inst0", true), "11 0");
    const auto link = static_cast<std::uint32_t>(std::stoul(other.Open().substr(2)));
    for (const std::uint32_t flags : {End | 0U, End | Wait}) {
        EXPECT_EQ(other.Write(link, "*IDN?", flags), "11 0");
    }
    EXPECT_EQ(other.Do(13, link, 2), "11 0");
    EXPECT_EQ(other.Do(19, link), "12");
    EXPECT_EQ(client.Do(18, 1), "11");
    EXPECT_EQ(client.Do(19, 1), "0");
    EXPECT_EQ(other.Do(18, link), "0");
    EXPECT_EQ(client.Write(1, "*IDN?"), "11 0");
    EXPECT_EQ(other.Do(23, link), "0") << "its lock ends with it";
    EXPECT_EQ(client.Write(1, "*IDN?"), "0 5");
}

TEST_F(Vxi11, WhatItDoesntKnowIsAnsweredAllTheSame) {
    ASSERT_EQ(client.Open(), "0 1");
    for (const std::uint32_t refused : {20U, 25U, 26U}) {
        EXPECT_EQ(client.Do(refused, 1), "8");
    }
    EXPECT_EQ(client.Do(22, 1, 2), "8 0");
    EXPECT_EQ(client.Do(99, 1), "status 3");
    EXPECT_EQ(client.Call(Core, 1, 11, XdrWriter().Number(1)), "status 4");
    EXPECT_EQ(client.Call(Core, 2, 11, {}), "status 2");
    EXPECT_EQ(client.Call(Mapper, 2, 3, {}), "status 1");
    EXPECT_EQ(client.Call(Core, 1, 0, {}, 0), "");
}

TEST_F(Vxi11, RecordsComeInAnyPiecesAndNotTooLong) {
    RecordReader reader(10);
    const std::string stream("\0\0\0\3abc\0\0\0\0\x80\0\0\2de\x80\0\0\1f", 22);
    std::string records;
    for (const char& byte : stream) {
        EXPECT_EQ(reader.Feed(std::as_bytes(std::span(&byte, 1))), 1U);
        if (reader.IsComplete()) {
            records.append(reinterpret_cast<const char*>(reader.Record().data()),
                           reader.Record().size());
            records += '|';
        }
    }
    EXPECT_EQ(records, "abcde|f|");
    const std::string tooLong("\0\0\0\6abcdef\x80\0\0\5", 14);
    EXPECT_THROW(static_cast<void>(reader.Feed(std::as_bytes(std::span(tooLong)))), XdrFailure);
}

// A connection to a port of this computer.
class RecordConnection {
 public:
    explicit RecordConnection(std::uint16_t port) : m_stream("127.0.0.1", std::to_string(port)) {
        m_stream.expires_after(std::chrono::seconds(100));
    }
    std::string Exchange(const std::string& message) {
        m_stream << AsRecord(message) << std::flush;
        RecordReader reader(100000);
        for (char byte = 0; !reader.IsComplete() && m_stream.get(byte);) {
            static_cast<void>(reader.Feed(std::as_bytes(std::span(&byte, 1))));
        }
        EXPECT_TRUE(reader.IsComplete());
        return {reinterpret_cast<const char*>(reader.Record().data()), reader.Record().size()};
    }
    Vxi11Client Client() {
        return Vxi11Client([this](const std::string& message) { return Exchange(message); });
    }

 private:
    asio::ip::tcp::iostream m_stream;
};

std::string OverUdp(std::uint16_t port, const std::string& message) {
    asio::io_context context;
    asio::ip::udp::socket socket(context, asio::ip::udp::v4());
    socket.send_to(asio::buffer(message), {asio::ip::address_v4::loopback(), port});
    std::string reply(1000, '\0');
    std::size_t received = 0;
    socket.async_receive(asio::buffer(reply),
                         [&](std::error_code, std::size_t bytes) { received = bytes; });
    context.run_for(std::chrono::seconds(20));
    return reply.substr(0, received);
}

TEST(Vxi11Service, IsFoundThroughThePortMapperAndWaitsUntilAnAbort) {
    const auto generator = std::make_shared<Generator>(GeneratorSettings{});
    GeneratorServer server(generator, 0);
    server.ServeVxi11(0);
    std::thread thread([&] { server.Run(); });
    const std::string port = std::to_string(server.Vxi11Port());
    RecordConnection mapping(server.MapperPort());
    const auto question = XdrWriter().Number(Core).Number(1).Number(6).Number(0);
    EXPECT_EQ(mapping.Client().Call(Mapper, 2, 3, question), port);
    Vxi11Client datagrams(
        [&](const auto& message) { return OverUdp(server.MapperPort(), message); });
    EXPECT_EQ(datagrams.Call(Mapper, 2, 3, question), port);
    const auto overUdp = XdrWriter().Number(Core).Number(1).Number(17).Number(0);
    EXPECT_EQ(datagrams.Call(Mapper, 2, 3, overUdp), "0") << "it isn't served so";

    RecordConnection device(server.Vxi11Port());
    Vxi11Client client = device.Client();
    EXPECT_EQ(client.Open(), "0 1");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(client.Read(1, 100, 0, 0, 100), "15 0 ");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
    std::atomic<bool> hasEnded = false;
    std::thread aborting([&] {
        RecordConnection connection(server.Vxi11Port());
        Vxi11Client aborter = connection.Client();
        EXPECT_EQ(aborter.Call(Abort, 1, 1, XdrWriter().Number(2)), "4");
        // The first may come before there is something to end.
        while (!hasEnded) {
            EXPECT_EQ(aborter.Call(Abort, 1, 1, XdrWriter().Number(1)), "0");
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    });
    EXPECT_EQ(client.Read(1, 100, 0, 0, 60000), "23 0 ");
    hasEnded = true;
    aborting.join();
    client.Write(1, "*OPC?");
    EXPECT_EQ(client.Read(1), "0 4 1\n");
    server.Stop();
    thread.join();
}

}  // namespace
}  // namespace krv::tests
