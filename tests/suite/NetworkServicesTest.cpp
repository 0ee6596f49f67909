#include "suite/discovery/NetworkServices.h"

#include <gtest/gtest.h>

#include <thread>

#include "simulator/device/Generator.h"
#include "simulator/server/GeneratorServer.h"
#include "suite/discovery/ServiceAnswers.h"

namespace krv::tests {
namespace {

using namespace suite;

std::optional<DnsMessage> Read(const std::string& bytes) {
    return ReadDnsMessage(std::as_bytes(std::span(bytes)));
}

const ServedInstrument Bench{"Maker", "M1",          "7",
                             "B",     {10, 0, 0, 7}, {{ScpiService, 5026}, {Vxi11Service, 111}}};

TEST(NetworkServices, AnInstrumentAnswersWhatItIsAskedFor) {
    const auto records = ServiceRecords(Bench);
    const auto question = Read(DnsMessageBytes(ServiceQuestion(99), 0));
    const auto answer =
        Read(DnsMessageBytes(AnswerTo(question.value(), records, true).value(), 10));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->id, 99);
    EXPECT_EQ(answer->questions.size(), 3U) << "as clients want it that know only plain DNS";
    EXPECT_EQ(answer->answers.size(), 2U);
    EXPECT_EQ(answer->additional.size(), 5U);
    EXPECT_EQ(AddressesIn(*answer, {1, 2, 3, 4}), std::vector<std::string>{"tcp://10.0.0.7:5026"});

    DnsMessage one{.questions = {{DnsNameOf("MAKER M1 7._SCPI-RAW._tcp.local"), DnsType::Service}}};
    const auto place = AnswerTo(one, records, false).value();
    EXPECT_EQ(place.answers.at(0).port, 5026);
    EXPECT_EQ(place.id, 0);
    one.questions[0].type = DnsType::Pointer;
    EXPECT_FALSE(AnswerTo(one, records, false));
    EXPECT_FALSE(AnswerTo(*answer, records, false)) << "no answer to answers";
}

// As others write it: names go on elsewhere, with records that nobody here needs.
TEST(NetworkServices, NamesThatGoOnElsewhereAreFollowedBackOnly) {
    const std::string header("\0\7\x84\0\0\0\0\1\0\0\0\2", 12);
    const std::string pointer("\4_lxi\4_tcp\5local\0\0\14\0\1\0\0\0\12\0\4\1A\300\14", 31);
    const std::string service("\300\47\0\41\200\1\0\0\0\12\0\12\0\0\0\0\0\120\1h\300\26", 22);
    const std::string other("\300\14\0\57\0\1\0\0\0\12\0\2xx", 14);
    const auto answer = Read(header + pointer + service + other);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->answers.at(0).target, DnsNameOf("A._lxi._tcp.local"));
    EXPECT_EQ(answer->additional.at(0).target, DnsNameOf("h.local"));
    EXPECT_EQ(AddressesIn(*answer, {1, 2, 3, 4}), std::vector<std::string>{"tcp://1.2.3.4:5025"});

    std::string loop = header + pointer + service + other;
    loop[header.size() + pointer.size() - 1] = '\51';
    EXPECT_FALSE(Read(loop)) << "a name that goes on in itself";
    for (std::size_t length = 0; length < loop.size(); ++length) {
        EXPECT_FALSE(Read((header + pointer + service + other).substr(0, length))) << length;
    }
}

TEST(NetworkServices, AGeneratorThatIsAnnouncedIsFound) {
    simulator::GeneratorServer server(simulator::GeneratorSettings{}, 0);
    server.Announce();
    std::thread thread([&] { server.Run(); });
    const std::string address = "tcp://127.0.0.1:" + std::to_string(server.Port());
    int count = 0;
    // A busy machine may be late with one answer.
    for (int times = 0; times < 40 && count == 0; ++times) {
        FindNetworkAddresses([&](const std::string& found) { count += found == address ? 1 : 0; },
                             std::chrono::milliseconds(500), {{127, 0, 0, 1}});
    }
    server.Stop();
    thread.join();
    EXPECT_EQ(count, 1);
}

}  // namespace
}  // namespace krv::tests
