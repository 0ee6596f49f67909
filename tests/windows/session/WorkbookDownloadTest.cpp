// A download as users make it, from a workbook's cells into a generator of the old family, whose
// memory is compared with what should have arrived. The sessions that ./run plays do the same with
// the new family.
#include <string>

#include "tests/windows/session/WorkbookSession.h"

namespace krv::tests {
namespace {

constexpr std::size_t Points = 200;
// Beyond the peak of one channel alone, so that both must have been scaled alike.
constexpr double Peak = 0.75;

Wave Tone(double amplitude, double phase) {
    Wave wave;
    for (std::size_t point = 0; point < Points; ++point) {
        // Of few digits, so that the cells hold exactly the same numbers.
        wave.push_back(
            std::nearbyint(amplitude * std::cos(0.1 * static_cast<double>(point) + phase) * 4096) /
            4096);
    }
    return wave;
}

// At half of full scale, with zero in the middle of 14 bits.
Codes HalfScale(const Wave& wave) {
    Codes codes;
    for (const double value : wave) {
        codes.push_back(
            static_cast<std::int16_t>(std::nearbyint(value / Peak * 8191.499 / 2 + 8192)));
    }
    return codes;
}

TEST_F(WorkbookSession, DownloadsCellsIntoAGeneratorOfTheOldFamily) {
    const Wave i = Tone(Peak, 0);
    const Wave q = Tone(0.5, 1);
    StartGenerator("M771XB");
    OpenBook({i, q});
    Connect();
    const bench::UserWindow dialog = OpenDownloadOfCells("A1:A200", "B1:B200");
    dialog.Part("TextScaleFactor").Type("50");
    DownloadAs(dialog, "HALF");
    EXPECT_EQ(Confirm(Complete), Complete);
    EXPECT_EQ(Stored("HALF", "i"), HalfScale(i));
    EXPECT_EQ(Stored("HALF", "q"), HalfScale(q));

    // The same cells again, validated only, leave the generator as it is.
    dialog.Part("TextDestinationName").Type("NOT_SENT");
    dialog.Part("CommandValidate").Click();
    EXPECT_EQ(Confirm("Estimated download time"),
              "Estimated download time, assuming\nLAN connection at 87500 bytes per second:\n"
              "3 seconds.");
    EXPECT_EQ(Stored("NOT_SENT", "i"), Codes{});
}

}  // namespace
}  // namespace krv::tests
