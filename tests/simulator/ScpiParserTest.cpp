#include "simulator/scpi/ScpiParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "simulator/scpi/HeaderPattern.h"

namespace krv::tests {
namespace {

using namespace simulator;

// Writes down what the parser reports, e.g. `ARB:SEL 'a' . /` for a unit with a string.
class Recorder final : public ScpiParser::Sink {
 public:
    std::string text;
    std::string unknownHeader = "UNKNOWN";

    bool OnHeader(std::string_view header) override {
        Note(header);
        return header != unknownHeader;
    }
    void OnText(std::string_view word) override { Note("<" + std::string(word) + '>'); }
    void OnString(std::string_view string) override { Note("'" + std::string(string) + "'"); }
    void OnBlockStart(std::uint32_t length) override { Note('#' + std::to_string(length) + '('); }
    void OnBlockData(std::span<const std::byte> bytes) override {
        text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    void OnBlockEnd() override { text += ')'; }
    void OnUnitEnd() override { Note("."); }
    void OnSyntaxError(ScpiError error) override {
        Note("error" + std::to_string(static_cast<int>(error)));
    }
    void OnMessageEnd() override { Note("/"); }

 private:
    void Note(std::string_view what) {
        text += text.empty() ? "" : " ";
        text += what;
    }
};

std::string Parse(std::string_view stream, std::size_t pieceSize = SIZE_MAX) {
    Recorder recorder;
    ScpiParser parser(recorder);
    for (auto bytes = std::as_bytes(std::span(stream)); !bytes.empty();) {
        // Each piece in memory of its own size, so that reading past it would be noticed.
        const auto piece = bytes.first(std::min(bytes.size(), pieceSize));
        const std::vector<std::byte> copy(piece.begin(), piece.end());
        parser.Feed(copy);
        bytes = bytes.subspan(piece.size());
    }
    return recorder.text;
}

struct Case {
    std::string stream;
    std::string told;
};

void ExpectTold(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        EXPECT_EQ(Parse(one.stream), one.told) << one.stream;
        for (const std::size_t pieceSize : {1U, 2U, 3U, 7U}) {
            EXPECT_EQ(Parse(one.stream, pieceSize), one.told) << one.stream << " by " << pieceSize;
        }
    }
}

TEST(ScpiParser, TakesMessagesApart) {
    ExpectTold({
        {"*IDN?\n", "*IDN? . /"},
        {"*IDN?\r\n", "*IDN? . /"},
        {"  *RST ; ; *CLS\t\r\n", "*RST . *CLS . /"},
        {"\n\r\n", "/ /"},
        {"*ESE 32;:syst:err?\n*WAI\n", "*ESE <32> . :syst:err? . / *WAI . /"},
        {"A 1 , \"b\",'c' ,D\n", "A <1> 'b' 'c' <D> . /"},
        {"A \"say \"\"x\"\", 'y';\"\n", "A 'say \"x\", 'y';' . /"},
        {"A 'it''s'\n", "A 'it's' . /"},
        {"A ''\n", "A '' . /"},
        {"A 1.5 \t kHz , -2\r,.5dBm;B +1  v\n", "A <1.5 kHz> <-2> <.5dBm> . B <+1 v> . /"},
        {"*IDN", ""},
    });
}

TEST(ScpiParser, TakesBlocksToTheirDeclaredLengthWhateverTheyHold) {
    ExpectTold({
        {"A #15ab\n;\"\n*B\n", "A #5(ab\n;\") . / *B . /"},
        {"A n,#10,#210#15\n\n\n,;'x;*B?\n", "A <n> #0() #10(#15\n\n\n,;'x) . *B? . /"},
        {"A #13#1\n , #12\n\n ;B\n", "A #3(#1\n) #2(\n\n) . B . /"},
        {"A #9000000001\n\n", "A #1(\n) . /"},
    });
}

TEST(ScpiParser, ReportsOneErrorAMessageAndReadsOverTheRestOfIt) {
    ExpectTold({
        {"A 1,\n*B\n", "A <1> error-109 / *B . /"},
        {"A ,1;*B\n", "A error-102 /"},
        {"A \"x\" y;*B\n", "A 'x' error-103 /"},
        {"A x y;*B\n", "A <x> error-103 /"},
        {"A 1 2;*B\n", "A <1> error-103 /"},
        {"A 1 k Hz;*B\n", "A <1 k> error-103 /"},
        {"A$ 1\n", "error-101 /"},
        {"A 1\"x\"\n", "A error-101 /"},
        {"A \"open;*B\n*C\n", "A error-151 / *C . /"},
        {"A #X1;*B\n", "A error-161 /"},
        {"A #0ab\n*B\n", "A error-161 / *B . /"},
        {"A #2x\n", "A error-161 /"},
        {"A #2\n", "A error-161 /"},
        {"UNKNOWN 1,2;*B\n*C\n", "UNKNOWN / *C . /"},
    });
}

TEST(ScpiParser, KeepsToDeclaredLengthsInWhatItReadsOver) {
    ExpectTold({
        {"UNKNOWN \"n\",#15\n*B\n\n;X\n*C\n", "UNKNOWN / *C . /"},
        {"UNKNOWN \"#15\",#13\n\n\n\n*C\n", "UNKNOWN / *C . /"},
        {"A 'x' #13\n*X\n*C\n", "A 'x' error-103 / *C . /"},
        {"UNKNOWN #Z,#13\n\n\n,#12\n\n\n*C\n", "UNKNOWN / *C . /"},
    });
}

TEST(ScpiParser, BoundsWhatItKeeps) {
    const std::string longText(ScpiParser::MaxTextLength + 1, 'x');
    const std::string longHeader(ScpiParser::MaxHeaderLength + 1, 'X');
    EXPECT_EQ(Parse(longHeader + " 1\n*B\n"), "error-112 / *B . /");
    EXPECT_EQ(Parse("A " + longText + "\n*B\n"), "A error-223 / *B . /");
    EXPECT_EQ(Parse("A \"" + longText + "\",#12\n\n\n*B\n"), "A error-223 / *B . /");
    EXPECT_EQ(Parse("A '" + longText.substr(1) + "'\n"), "A '" + longText.substr(1) + "' . /");
}

TEST(HeaderPattern, MatchesShortAndLongFormsOnly) {
    struct {
        const char* pattern;
        std::vector<const char*> matching;
        std::vector<const char*> other;
    } const cases[] = {
        {"SYSTem:ERRor[:NEXT]?",
         {"SYST:ERR?", "system:error?", ":Syst:Error:next?", "SYSTEM:ERR:NEXT?"},
         {"SYST:ERR", "SYSTE:ERR?", "SYST:ERR:NEX?", "SYST:ERR:?", "SYST?", "::SYST:ERR?",
          "SYST:ERR:NEXT:NEXT?", "SYST::ERR?", "?", ""}},
        {"ARBitrary:DATA:IQ", {"ARB:DATA:IQ", "arbitrary:data:iq"}, {"ARB:DATA", "ARB:DATA:I"}},
        {"*IDN?", {"*IDN?", "*idn?"}, {"IDN?", "*IDN", "*ID?"}},
    };
    for (const auto& one : cases) {
        for (const char* header : one.matching) {
            EXPECT_TRUE(HeaderMatches(one.pattern, header)) << header;
        }
        for (const char* header : one.other) {
            EXPECT_FALSE(HeaderMatches(one.pattern, header)) << header;
        }
    }
}

}  // namespace
}  // namespace krv::tests
