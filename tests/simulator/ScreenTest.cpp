// The generator's display, its captures, and the files that they are kept as.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "simulator/screen/ScreenDrawing.h"
#include "suite/picture/BitmapFile.h"
#include "suite/picture/DotFont.h"
#include "tests/simulator/GeneratorConversation.h"

namespace krv::tests {
namespace {

using namespace simulator;

using suite::picture::GlyphRows;
using suite::picture::IsInk;
using suite::picture::Picture;
namespace Glyph = suite::picture::Glyph;

// Reads letters off a display.
char LetterAt(const Picture& screen, int left, int top, int scale) {
    const suite::picture::Color paper = screen.Row(top)[left - 1];
    for (char letter = ' '; letter <= '~'; ++letter) {
        bool fits = true;
        for (int row = 0; row < Glyph::Height && fits; ++row) {
            for (int column = 0; column < Glyph::Width && fits; ++column) {
                const bool ink = screen.Row(top + row * scale)[left + column * scale] != paper;
                fits = ink == IsInk(GlyphRows(letter), column, row);
            }
        }
        if (fits) {
            return letter;
        }
    }
    return '\0';
}

std::string TextAt(const Picture& screen, int left, int top, int scale, int letters) {
    std::string text;
    for (int index = 0; index < letters; ++index) {
        text += LetterAt(screen, left + index * Glyph::Advance * scale, top, scale);
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

class ScreenTest : public GeneratorConversation {
 protected:
    [[nodiscard]] Picture Screen() const { return DrawScreen(generator->ShownOnScreen()); }
};

TEST_F(ScreenTest, SetsAndTellsWhatIsPutOut) {
    Converse({{"FREQ?", "1.000000000E+09"},
              {":SOURce:FREQuency:CW 2.5GHZ;CW?", "2.500000000E+09"},
              {"FREQ 250kHz;FREQ?", "2.500000000E+05"},
              {"FREQ +1234567.5;FREQ?", "1.234567500E+06"},
              {"FREQ 1e3mhz;FREQ?", "1.000000000E+09"},
              {"POW?", "-2.000000000E+01"},
              {"POW:LEV -7.25dBm;LEV?", "-7.250000000E+00"},
              {"POW 1.5 dBm;POW?;:FREQ 2  GHz ;FREQ?", "1.500000000E+00;2.000000000E+09"},
              {"OUTP?", "0"},
              {"OUTP ON;OUTP:STAT?", "1"},
              {"*RST;FREQ?;POW?;OUTP?", "1.000000000E+09;-2.000000000E+01;0"}});
    EXPECT_EQ(Error(), "0,\"No error\"");
    Refuse({{"FREQ 249.9kHz", "-222"},
            {"FREQ 20.1GHz", "-222"},
            {"POW 25.1", "-222"},
            {"POW -137", "-222"},
            {"FREQ nan", "-104"},
            {"FREQ 1e999", "-104"},
            {"FREQ 1dBm", "-104"},
            {"POW 1GHz", "-104"},
            {"FREQ \"1\"", "-104"},
            {"FREQ 1 G Hz", "-104"}});
    EXPECT_EQ(Say("FREQ?;POW?"), "1.000000000E+09;-2.000000000E+01");
}

TEST_F(ScreenTest, ShowsTheState) {
    Picture screen = Screen();
    ASSERT_EQ(screen.width, 640);
    ASSERT_EQ(screen.height, 320);
    EXPECT_EQ(TextAt(screen, 12, 5, 2, 6), "M7718C");
    EXPECT_EQ(TextAt(screen, 12, 50, 3, 17), "1000.000 000 MHz");
    EXPECT_EQ(TextAt(screen, 330, 50, 3, 10), "-20.00 dBm");
    EXPECT_EQ(TextAt(screen, 12, 140, 2, 15), "(none selected)");
    EXPECT_EQ(TextAt(screen, 12, 305, 1, 9), "No errors");
    Say("FREQ 999999.4;POW 3.456;:ARB:DATA:IQ \"WFM-1\",#18\1\2\3\4\5\6\7\4;:ARB:SEL WFM-1;STAT "
        "ON");
    Say("BAD");
    Say("WORSE");
    screen = Screen();
    EXPECT_EQ(TextAt(screen, 12, 50, 3, 17), "0.999 999 MHz");
    EXPECT_EQ(TextAt(screen, 330, 50, 3, 10), "3.46 dBm");
    EXPECT_EQ(TextAt(screen, 12, 140, 2, 15), "WFM-1");
    EXPECT_EQ(TextAt(screen, 12, 305, 1, 43), "2 errors, first: -113 Undefined header;BAD");
    EXPECT_EQ(TextAt(screen, 558, 5, 2, 6), "REMOTE");
}

// Whether any pixel right of the middle of the plot, between these rows, has the colour that is at
// the beginning of the legend's entry.
bool IsInPlot(const Picture& screen, int legend, int top, int bottom) {
    const suite::picture::Color color = screen.Row(165)[legend];
    for (int row = top; row < bottom; ++row) {
        if (std::find(screen.Row(row) + 262, screen.Row(row) + 506, color) !=
            screen.Row(row) + 506) {
            return true;
        }
    }
    return false;
}

TEST_F(ScreenTest, ShowsIAndQAndMarkersOfWhatIsPlaying) {
    for (const char* model : {"M7718C", "M771XB"}) {
        SwitchOn({.model = model, .memoryPoints = 100});
        const bool isNew = std::string(model) == "M7718C";
        Say(isNew ? ":ARB:DATA:INT W,#18\1A\2B\3C\4D" : ":ARB:DATA:IQ W,#14\1A\3C,#14\2B\4D");
        if (isNew) {
            Say(":ARB:DATA:MARK W,#14" + std::string("\0\0\0\5", 4));
        }
        Say(":ARB:SEL W");
        EXPECT_EQ(TextAt(Screen(), 205, 92, 1, 7), "MKR OFF");
        Say(":ARB:STAT ON");
        const Picture screen = Screen();
        EXPECT_EQ(TextAt(screen, 329, 126, 1, 30), "Memory: 2 points used, 98 free") << model;
        EXPECT_EQ(TextAt(screen, 120, 92, 1, 6), "MOD ON");
        EXPECT_EQ(TextAt(screen, 180, 162, 1, 1), "I");
        EXPECT_TRUE(IsInPlot(screen, 160, 177, 270)) << model;
        EXPECT_EQ(TextAt(screen, 221, 162, 1, 1), "Q");
        EXPECT_TRUE(IsInPlot(screen, 201, 177, 270)) << model;
        EXPECT_EQ(TextAt(screen, 262, 162, 1, 11), isNew ? "Markers 1 3" : "");
    }
}

TEST_F(ScreenTest, KeepsCapturesAsFiles) {
    EXPECT_EQ(Say("MMEM:CAT?;EXIS? \"DISPLAY.BMP\""), "\"\";0");
    EXPECT_EQ(Say("MMEM:DATA? \"DISPLAY.BMP\""), "");
    EXPECT_EQ(Error().substr(0, 4), "-256");
    const Picture shown = Screen();
    Say("HCOP");
    const std::string answer = Say("MMEM:DATA? \"display.bmp\"");
    ASSERT_EQ(answer.substr(0, 2), "#6");
    const std::string file = answer.substr(8);
    EXPECT_EQ(std::stoul(answer.substr(2, 6)), file.size());
    EXPECT_EQ(Say("MMEM:CAT?"), "\"DISPLAY.BMP," + std::to_string(file.size()) + '"');
    const Picture captured = suite::picture::ParseBitmapFile(file);
    ASSERT_EQ(captured.pixels.size(), shown.pixels.size());
    // All but the mark of remote operation, which the capture's own command has brought.
    EXPECT_TRUE(std::equal(captured.Row(24), captured.Row(319) + 640, shown.Row(24)));
    EXPECT_EQ(TextAt(captured, 558, 5, 2, 6), "REMOTE");
    Say("MMEM:DEL \"Display.bmp\"");
    EXPECT_EQ(Say("MMEM:EXIS? \"DISPLAY.BMP\""), "0");
    Say("MMEM:DEL \"DISPLAY.BMP\"");
    EXPECT_EQ(Error().substr(0, 4), "-256");
}

TEST_F(ScreenTest, OfAnOlderModelIsCapturedByItsKeysOnly) {
    SwitchOn({.model = "M771XB"});
    Say("HCOP:IMM");
    EXPECT_EQ(Error().substr(0, 4), "-221");
    Say("DIAG:KEY \"TRIGGER\"");
    EXPECT_EQ(Error().substr(0, 4), "-221");
    EXPECT_EQ(Say("MMEM:EXIS? \"DISPLAY.BMP\""), "0");
    Say("DIAG:KEY \"local\"");
    EXPECT_EQ(Say("SYST:REM?"), "0");
    Say("DIAG:KEY \"Trigger\"");
    EXPECT_EQ(Say("SYST:REM?"), "0");
    EXPECT_EQ(Say("MMEM:EXIS? \"DISPLAY.BMP\""), "1");
    Say("DIAG:KEY \"PRESET\"");
    EXPECT_EQ(Error().substr(0, 4), "-224");
    const std::string answer = Say("MMEM:DATA? \"DISPLAY.BMP\"");
    EXPECT_EQ(TextAt(suite::picture::ParseBitmapFile(answer.substr(8)), 570, 5, 2, 5), "LOCAL");
}

}  // namespace
}  // namespace krv::tests
