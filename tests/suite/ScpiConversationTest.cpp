// The server's side of the conversation, against an instrument that says what the test wrote down.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "suite/scpi/BlockWriter.h"
#include "suite/scpi/ScpiConnection.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/scpi/ScpiReply.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ScriptedTransport.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

using Codes = std::vector<std::int16_t>;

class ScpiConversationTest : public ::testing::Test {
 protected:
    ScpiConversationTest() : server(MakeRegistry(), {}) {}

    // Connects to an instrument that goes on with these replies.
    void ConnectTo(std::deque<std::string> replies) {
        script = std::make_shared<TransportScript>();
        script->replies = {"Maker,M7718C,US1,B.03.40\n", "R2X,001\n"};
        script->replies.insert(script->replies.end(), replies.begin(), replies.end());
        server.Connect("script://");
        script->sent.clear();
        script->sends.clear();
    }
    void ExpectLost(const std::string& reason) {
        EXPECT_EQ(script->closed, 1);
        EXPECT_EQ(server.Instrument()->IO(), nullptr);
        const std::string expected = "The connection was lost: " + reason +
                                     " Check the instrument, then connect to it again.";
        EXPECT_EQ(DescriptionOf([&] { server.Instrument()->ReadError(); }), expected);
        EXPECT_EQ(DescriptionOf([&] { server.Instrument()->Model(); }), expected);
        EXPECT_EQ(DescriptionOf([&] { server.Arb()->HasDualArbOption(); }), expected);
        EXPECT_EQ(DescriptionOf([&] { server.Arb()->DownloadMarkers("n", {}, 0); }), expected);
        EXPECT_EQ(DescriptionOf([&] { server.InstalledOptions(); }), expected);
    }

    std::shared_ptr<TransportScript> script = std::make_shared<TransportScript>();
    ScpiInstrumentServer server;

 private:
    TransportRegistry MakeRegistry() {
        TransportRegistry registry;
        registry.Add("script", [this](const std::string&, const TimeOuts&) {
            return std::make_unique<ScriptedTransport>(script);
        });
        return registry;
    }
};

TEST_F(ScpiConversationTest, SaysThatNoInstrumentIsConnected) {
    ASSERT_NE(server.Instrument(), nullptr);
    EXPECT_EQ(server.Instrument()->IO(), nullptr);
    const std::string expected = "No instrument is connected. Connect to an instrument first.";
    EXPECT_EQ(DescriptionOf([&] { server.Instrument()->Model(); }), expected);
    ConnectTo({});
    const auto io = server.Instrument()->IO();
    EXPECT_EQ(io->ConnectionKind(), "Scripted");
    EXPECT_EQ(io->Address(), "script://");
    server.Disconnect();
    EXPECT_EQ(script->closed, 1);
    EXPECT_EQ(DescriptionOf([&] { io->ReturnToLocal(); }), expected);
}

// An instrument may drop a message that it doesn't know, with or without an error in its queue.
TEST_F(ScpiConversationTest, LooksForAWaveformWithoutWaitingForAReplyThatNeverComes) {
    const std::string none = "0,\"No error\"\n";
    struct {
        std::deque<std::string> replies;
        bool isListed;
    } const cases[] = {
        {{none, "5,9,\"Pulse,INT,3\",\"Sine,IQ,2\"\n", "1\n", "\"last\"\n"}, true},
        {{none, "2,9,\"Sines,IQ,2\"\n1\n", "\"last\"\n"}, false},
        {{none, "none\n", "1\n", "\"last\"\n"}, false},
        {{none, "1\n", none, "\"last\"\n"}, false},
        {{none, "1\n", "-113,\"Undefined header\"\n", none, "\"last\"\n"}, false},
    };
    for (const auto& one : cases) {
        ConnectTo(one.replies);
        const auto memory = server.ScpiAccess()->Catalog();
        EXPECT_EQ(memory && FindStored(*memory, "sINE") != nullptr, one.isListed);
        EXPECT_EQ(server.Arb()->SelectedArbFile(), "last") << "the conversation goes on";
    }
    std::deque<std::string> full{none, "2,9"};
    for (int count = 0; count < 100; ++count) {
        full.emplace_back(",\"" + std::string(1000, 'x') + ",IQ,2\"");
    }
    full.insert(full.end(), {",\"Sine,IQ,2\"\n", "1\n"});
    ConnectTo(full);
    const auto memory = server.ScpiAccess()->Catalog();
    EXPECT_TRUE(memory && FindStored(*memory, "Sine") != nullptr);
}

TEST_F(ScpiConversationTest, AsksInOneLineAndReadsRepliesHoweverTheyCome) {
    ConnectTo(
        {"-22", "5,\"Out of ", "memory;a \"\"b\"\"\"\r\n", "+0,\"No error\"\n", "\"Si", "ne\"\n"});
    const auto error = server.Instrument()->ReadError();
    EXPECT_EQ(error.number, -225);
    EXPECT_EQ(error.message, "Out of memory;a \"b\"");
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
    EXPECT_EQ(server.Arb()->SelectedArbFile(), "Sine");
    EXPECT_EQ(script->sent, "SYSTem:ERRor?\nSYSTem:ERRor?\nARBitrary:SELect?\n");
}

TEST_F(ScpiConversationTest, SendsCodesInWireOrderAsDefiniteLengthBlocks) {
    const std::string none = "0,\"\"\n";
    ConnectTo({"1\n", none, "1\n", none, "1\n", none, "1\n", none});
    const Codes i{0x4142, 0x4344};
    const Codes q{0x6162};
    server.Arb()->DownloadIQ("a\"b", i, q, 0);
    server.Arb()->DownloadIQ("n", i, {}, 0);
    server.Arb()->DownloadInterleaved("n", i, 0);
    server.Arb()->DownloadMarkers("n", {}, 0);
    EXPECT_EQ(script->sent,
              "ARBitrary:DATA:IQ \"a\"\"b\",#14ABCD,#12ab\n*OPC?\nSYSTem:ERRor?\n"
              "ARBitrary:DATA:IQ \"n\",#14ABCD\n*OPC?\nSYSTem:ERRor?\n"
              "ARBitrary:DATA:INTerleaved \"n\",#14ABCD\n*OPC?\nSYSTem:ERRor?\n"
              "ARBitrary:DATA:MARKers \"n\",#10\n*OPC?\nSYSTem:ERRor?\n");
}

TEST_F(ScpiConversationTest, SendsLargeArraysInPiecesWithTheHeaderApart) {
    ConnectTo({"1\n", "0,\"\"\n"});
    server.Arb()->DownloadInterleaved("n", Codes(BlockWriter::PieceCodes * 2 + 1), 0);
    const std::size_t piece = BlockWriter::PieceCodes * 2;
    const std::string header = "ARBitrary:DATA:INTerleaved \"n\",#6524290";
    EXPECT_EQ(script->sends, (std::deque<std::size_t>{header.size(), piece, piece, 2, 1, 6, 14}));
}

// Neither a line end in a block nor one at the end of a piece ends the message.
TEST_F(ScpiConversationTest, TellsTheInterfaceWhereEachMessageEnds) {
    ConnectTo({"1\n", "0,\"\"\n"});
    script->messageEnds.clear();
    const Codes pieces(2 * BlockWriter::PieceCodes + 1, 0x0A0A);
    server.Arb()->DownloadIQ("n", pieces, Codes(1, 0x0A0A), 0);
    const std::size_t query = script->sent.find("*OPC?");
    EXPECT_EQ(script->messageEnds,
              (std::deque<std::size_t>{query, query + 6, script->sent.size()}));
    ConnectTo({});
    script->messageEnds.clear();
    script->replies = {"0,\"\"\n", "1\n", "0,\"\"\n"};
    server.Instrument()->RestoreState(ByteArray{{std::byte{10}, std::byte{10}}});
    // The question for errors, the state, and two questions more.
    EXPECT_EQ(script->messageEnds, (std::deque<std::size_t>{14, 31, 37, 51})) << script->sent;
}

// The interface's own end counts where the line end is missing, and nowhere else.
TEST_F(ScpiConversationTest, TakesAReplyThatEndsWithoutALineEnd) {
    ConnectTo({"\"Sine\"", "#14a\nb\n", "", "0,\"No error\""});
    script->hasEnds = true;
    EXPECT_EQ(server.Arb()->SelectedArbFile(), "Sine");
    EXPECT_EQ(std::get<ByteArray>(server.Instrument()->CaptureState()).bytes.size(), 4U);
    // The end of that block comes alone, when the next reply is waited for.
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
}

TEST_F(ScpiConversationTest, RefusesBeforeSendingWhatCannotBeSent) {
    ConnectTo({"1\n", "0,\"\"\n"});
    const std::int16_t code = 0;
    // The length is refused before anything is read.
    const std::span<const std::int16_t> tooMany(&code, BlockWriter::MaxCodes + 1);
    EXPECT_EQ(
        DescriptionOf([&] {
            server.Arb()->DownloadIQ("n", {&code, 1}, tooMany, 0);
        }),
        "An array of 500000000 codes cannot be sent: the instrument takes at most 499999999 in "
        "one array.");
    EXPECT_NE(DescriptionOf([&] {
                  server.Arb()->DownloadIQ("a\nb", {&code, 1}, {}, 0);
              }),
              "no error");
    EXPECT_EQ(script->sent, "");
    server.Arb()->DownloadIQ("n", {&code, 1}, {}, 0);
}

TEST_F(ScpiConversationTest, TakesTheErrorsOfADownloadOutOfTheQueueAtItsEnd) {
    ConnectTo({"1\n", "-222,\"Too loud\"\n", "-350,\"Queue overflow\"\n", "0,\"\"\n"});
    server.Arb()->DownloadIQ("n", Codes(1), {}, 0);
    script->sent.clear();
    EXPECT_EQ(server.Instrument()->ReadError().number, -222);
    EXPECT_EQ(server.Instrument()->ReadError().message, "Queue overflow");
    EXPECT_EQ(script->sent, "");
    script->replies = {"0,\"\"\n"};
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
    EXPECT_EQ(script->sent, "SYSTem:ERRor?\n");
    // One that never runs out of them ends the operation, too.
    ConnectTo({"1\n"});
    script->replies.insert(script->replies.end(), 200, "-1,\"again\"\n");
    server.Arb()->DownloadIQ("n", Codes(1), {}, 0);
    EXPECT_EQ(server.Instrument()->ReadError().number, -1);
}

TEST_F(ScpiConversationTest, ClosesOnAReplyThatMakesNoSense) {
    const auto reason = [](const std::string& reply, const std::string& query) {
        return "The connection to the instrument at script:// failed: it answered \"" + reply +
               "\" to \"" + query + "\".";
    };
    for (const char* reply :
         {"", "x,\"y\"", "-1", "-1,y", "-1,\"y", "-1,\"a\"b\"", "99999999999,\"\""}) {
        ConnectTo({std::string(reply) + '\n'});
        const std::string expected = reason(reply, "SYSTem:ERRor?");
        EXPECT_EQ(DescriptionOf([&] { server.Instrument()->ReadError(); }), expected);
        ExpectLost(expected);
    }
    ConnectTo({"Sine\n"});
    EXPECT_EQ(DescriptionOf([&] { server.Arb()->ArbFileSelected(); }),
              reason("Sine", "ARBitrary:SELect?"));
    for (const char* reply : {"", "0", "1,2;#H0,#H0,#H0;1", "1,2,3;#H0,#H0;1", "1,2,3;0,0,0;1",
                              "1,2,-3;#H0,#H0,#H0;1", "1,2,3;#H0,#H0,#H100000000;1", "1;1", ";1"}) {
        ConnectTo({std::string(reply) + '\n'});
        EXPECT_EQ(DescriptionOf([&] { static_cast<void>(server.Readback()->ReadBack("n")); }),
                  reason(reply, "ARBitrary:SIZE? \"n\";CHECksum? \"n\";*OPC?"));
    }
    ConnectTo({"0\n"});
    EXPECT_EQ(DescriptionOf([&] { server.Arb()->DownloadMarkers("n", {}, 0); }),
              reason("0", "*OPC?"));
}

TEST_F(ScpiConversationTest, ClosesWhenTheInstrumentFailsOnTheWay) {
    ConnectTo({});
    EXPECT_EQ(DescriptionOf([&] { server.Instrument()->ReadError(); }), "Nothing was heard.");
    ExpectLost("Nothing was heard.");
    ConnectTo({"\"half a reply"});
    EXPECT_EQ(DescriptionOf([&] { server.Arb()->SelectedArbFile(); }), "Nothing was heard.");
    // In the middle of a block: nothing is sent behind it.
    ConnectTo({"1\n"});
    script->endAfter = 40;
    EXPECT_EQ(DescriptionOf([&] { server.Arb()->DownloadIQ("n", Codes(500), {}, 0); }),
              "The cable is out.");
    const std::string sent = script->sent;
    ExpectLost("The cable is out.");
    EXPECT_EQ(script->sent, sent);
    ConnectTo({"+0,\"\"\n"});
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
}

TEST_F(ScpiConversationTest, ClosesWhenRepliesAreOutOfStep) {
    ConnectTo({"0,\"\"\nlate\n"});
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
    EXPECT_EQ(DescriptionOf([&] { server.Instrument()->ReadError(); }),
              "The connection to the instrument at script:// failed: it sent \"late?\" unasked.");
    EXPECT_EQ(server.Instrument()->IO(), nullptr);
    ConnectTo(std::deque<std::string>(300, std::string(4096, 'x')));
    EXPECT_EQ(DescriptionOf([&] { server.Arb()->SelectedArbFile(); }),
              "The connection to the instrument at script:// failed: its reply has no end.");
}

TEST_F(ScpiConversationTest, StaysUnconnectedToWhatIsNotAnInstrument) {
    for (const char* identity : {"", "HTTP/1.1 400 Bad Request", "Maker,,1,2", "a,b,c"}) {
        script = std::make_shared<TransportScript>();
        script->replies = {std::string(identity) + '\n'};
        EXPECT_NE(DescriptionOf([&] { server.Connect("script://"); }).find("to \"*IDN?\""),
                  std::string::npos)
            << identity;
        EXPECT_EQ(server.Instrument()->IO(), nullptr);
        EXPECT_EQ(script->closed, 1);
    }
}

TEST_F(ScpiConversationTest, TakesNoControlCharactersFromAnInstrument) {
    ConnectTo({"-1,\"a\rkrv: \xC2\xB5\"\n"});
    script->replies.insert(
        script->replies.begin(),
        {"Maker,M7718C\x1B[2J,US\xC2\x9B 1,B\x9B.\xE2\x9B\x94\n", "R2X,0\x07\n"});
    server.Connect("script://");
    EXPECT_EQ(server.Instrument()->Model(), "M7718C?[2J");
    EXPECT_EQ(server.Instrument()->SerialNumber(), "US? 1");
    EXPECT_EQ(server.Instrument()->FirmwareRevision(), "B?.\xE2\x9B\x94");
    EXPECT_EQ(server.InstalledOptions(), (std::vector<std::string>{"R2X", "0?"}));
    EXPECT_EQ(server.Instrument()->ReadError().message, "a?krv: \xC2\xB5");
}

TEST(ScpiReply, ListsOptions) {
    EXPECT_EQ(ParseOptions("0"), std::vector<std::string>{});
    EXPECT_EQ(ParseOptions(""), std::vector<std::string>{});
    EXPECT_EQ(ParseOptions("R2X, 001,0"), (std::vector<std::string>{"R2X", "001"}));
}

TEST_F(ScpiConversationTest, TakesAFilesBytesWhateverTheyAre) {
    // A bitmap of one black pixel with line breaks where its size isn't looked at.
    const std::string bitmap(
        "BM\n\n\n\n\n\n\n\n\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0"
        "\0\0\0\0\n\r\n#\n;\n\"\n\n\n\n\0\0\0\0\0\0\0\0\0\0\0\0",
        58);
    const std::string reply = "#258" + bitmap + '\n';
    // All at once, and byte for byte with what follows.
    ConnectTo({"1\n", "1\n", reply, "0,\"No error\"\n"});
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "a.bmp").string();
    server.SaveScreenImage(file, ports::ImageFormat::ByExtension);
    EXPECT_EQ(script->sent,
              "HCOPy:IMMediate\n*OPC?\nMMEMory:EXISts? \"DISPLAY.BMP\"\n"
              "MMEMory:DATA? \"DISPLAY.BMP\"\n");
    EXPECT_EQ(server.Instrument()->ReadError().number, 0);
    std::deque<std::string> pieces{"1\n", "1\n"};
    for (const char byte : reply) {
        pieces.emplace_back(1, byte);
    }
    ConnectTo(pieces);
    server.SaveScreenImage(file, ports::ImageFormat::ByExtension);
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST_F(ScpiConversationTest, EndsTheConnectionAfterABlockThatMakesNoSense) {
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "a.bmp").string();
    for (const char* reply : {"\"DISPLAY.BMP\"\n", "#0abc\n", "#a\n", "#2x1abc\n", "#13abcd\n",
                              "#9999999999", "#15abc", "#1", ""}) {
        ConnectTo({"1\n", "1\n", reply});
        EXPECT_NE(DescriptionOf([&] { server.SaveScreenImage(file, 100); }), "no error") << reply;
        EXPECT_EQ(server.Instrument()->IO(), nullptr) << reply;
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(ScpiConversationTest, CapturesAndRestoresStatesOfUpTo64Megabytes) {
    std::deque<std::string> replies(1025, std::string(65536, 's'));
    replies.front() = "#867108864";
    replies.push_back("\n");
    ConnectTo(replies);
    const Value state = server.Instrument()->CaptureState();
    EXPECT_EQ(std::get<ByteArray>(state).bytes.size(), ScpiConnection::MaxBlockBytes);
    ConnectTo({"0,\"No error\"\n", "1\n", "0,\"No error\"\n"});
    server.Instrument()->RestoreState(state);
    EXPECT_GT(script->sent.size(), ScpiConnection::MaxBlockBytes);
    ByteArray larger = std::get<ByteArray>(state);
    larger.bytes.emplace_back();
    EXPECT_EQ(DescriptionOf([&] { server.Instrument()->RestoreState(larger); }),
              "This is not a state that an instrument has reported.");
    ConnectTo({"#867108865"});
    EXPECT_NE(DescriptionOf([&] { server.Instrument()->CaptureState(); }), "Nothing was heard.");
}

}  // namespace
}  // namespace krv::tests
