#include "suite/log/ConversationLog.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "common/Error.h"
#include "suite/log/WireText.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ScriptedTransport.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace suite;

// The lines of a stream that comes in pieces, each in brackets, then what is left.
std::string LinesOf(std::string_view stream, std::size_t pieceSize = SIZE_MAX) {
    WireText text;
    std::string lines;
    for (auto bytes = std::as_bytes(std::span(stream)); !bytes.empty();) {
        const auto piece = bytes.first(std::min(bytes.size(), pieceSize));
        text.Feed(piece, [&](std::string_view line) { lines += '[' + std::string(line) + ']'; });
        bytes = bytes.subspan(piece.size());
    }
    return lines + text.TakeRest();
}

TEST(WireText, AbbreviatesBlocksAndShowsTheRestAsItIs) {
    struct {
        std::string stream;
        std::string lines;
    } const cases[] = {
        {"", ""},
        {"*IDN?\n\n", "[*IDN?][]"},
        {"A \"x\\\xE9\t\"\r\n", "[A \"x\\\\\\xE9\\t\"\\r]"},
        // The sums were computed apart.
        {"A n,#14ABCD,#12\n;;*B?\n",
         "[A n,#14<4 bytes, CRC-32 DB1720A5>,#12<2 bytes, CRC-32 "
         "0A3D1351>;*B?]"},
        {"#15\"\n'#1\n", "[#15<5 bytes, CRC-32 C0EB4C23>]"},
        {"A #10;B \"#14\",'#1 \"3'\n", "[A #10<0 bytes, CRC-32 00000000>;B \"#14\",'#1 \"3']"},
        {"A #H12,x#14\n#0ab\n#2\n", "[A #H12,x#14][#0ab][#2]"},
        {"A #14AB", "A #14<2 of 4 bytes, CRC-32 30694C07>"},
    };
    for (const auto& one : cases) {
        for (const std::size_t pieceSize : {SIZE_MAX, std::size_t{1}, std::size_t{3}}) {
            EXPECT_EQ(LinesOf(one.stream, pieceSize), one.lines) << one.stream << pieceSize;
        }
    }
}

TEST(WireText, KeepsOnlyTheBeginningOfALongLine) {
    const std::string lines = LinesOf(std::string(100'000, 'x') + "\nA\n");
    EXPECT_LT(lines.size(), 3000U);
    EXPECT_TRUE(lines.ends_with("xxx...][A]"));
}

class ConversationLogTest : public ::testing::Test {
 protected:
    // Talks to an instrument that answers with these replies.
    ScpiInstrumentServer ServerWith(std::deque<std::string> replies) {
        auto script = std::make_shared<TransportScript>();
        script->replies = std::move(replies);
        TransportRegistry registry;
        registry.Add("script", [script](const std::string&, const TimeOuts&) {
            return std::make_unique<ScriptedTransport>(script);
        });
        LogConversations(registry, log);
        return ScpiInstrumentServer(registry);
    }
    // The file without its times, each of which must look like one.
    [[nodiscard]] std::string Written() const {
        const std::string content = folder.Content("log");
        const std::string timeless =
            std::regex_replace(content, std::regex("(^|\n)\\d+\\.\\d{3} "), "$1");
        EXPECT_NE(timeless, content);
        return timeless;
    }

    TemporaryFolder folder;
    std::shared_ptr<ConversationLog> log = std::make_shared<ConversationLog>(folder.Path() / "log");
};

TEST_F(ConversationLogTest, TellsWhoSaidWhat) {
    {
        auto server =
            ServerWith({"Maker,M7718C,US1,", "B.03.40\n", "0\r\n", "1\n", "0,\"\"\n", "\"half"});
        server.Connect("script://");
        server.Arb()->DownloadMarkers("m", std::vector<std::int16_t>{0x4142, 0x4344}, 0);
        EXPECT_THROW(server.Arb()->SelectedArbFile(), Error);
        EXPECT_THROW(server.Connect("other://"), Error);
    }
    EXPECT_EQ(Written(),
              "1 ! connected to script://\n"
              "1 > *IDN?\n1 < Maker,M7718C,US1,B.03.40\n"
              "1 > *OPT?\n1 < 0\\r\n"
              "1 > ARBitrary:DATA:MARKers \"m\",#14<4 bytes, CRC-32 DB1720A5>\n"
              "1 > *OPC?\n1 < 1\n"
              "1 > SYSTem:ERRor?\n1 < 0,\"\"\n"
              "1 > ARBitrary:SELect?\n"
              "1 ! Nothing was heard.\n"
              "1 < \"half (without an end)\n"
              "1 ! closed\n"
              "2 ! The address \"other://\" cannot be used: its scheme is not known; schemes that "
              "are: script://.\n");
    EXPECT_TRUE(log->IsComplete());
}

TEST_F(ConversationLogTest, TakesThePlaceOfNothingButALog) {
    const auto refusal = [&](const std::string& name) {
        return DescriptionOf([&] { const ConversationLog another(folder.At(name)); });
    };
    EXPECT_EQ(refusal("absent/log"),
              "Can't write " + folder.PathOf("absent/log") + ": No such file or directory");
    for (const char* data : {"0.5 1 2\n", "1\n", "{}"}) {
        folder.Write("data", data);
        EXPECT_EQ(refusal("data"), "Can't write " + folder.PathOf("data") +
                                       ": The file holds something else than a transcript.");
        EXPECT_EQ(folder.Content("data"), data);
    }
    log->Write(log->BeginConversation(), Saying::Remark, "earlier");
    log.reset();
    EXPECT_EQ(refusal("log"), "no error");
    EXPECT_EQ(refusal("log"), "no error") << "an empty one";
    EXPECT_EQ(folder.Content("log"), "");
}

}  // namespace
}  // namespace krv::tests
