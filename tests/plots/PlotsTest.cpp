// What plots show of a waveform, and the files they are kept in.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "plots/Cells.h"
#include "plots/Envelope.h"
#include "plots/FigureText.h"
#include "plots/Panel.h"
#include "plots/PixelCanvas.h"
#include "plots/PlotSheet.h"
#include "plots/PngFile.h"
#include "plots/SvgCanvas.h"

namespace krv::tests {
namespace {

// I is the values, Q their negatives.
analysis::Signal Mirrored(std::vector<double> values) {
    analysis::Signal signal;
    signal.points = values.size();
    signal.copy = [values = std::move(values)](std::size_t first, std::span<double> i,
                                               std::span<double> q) {
        for (std::size_t k = 0; k < i.size(); ++k) {
            i[k] = values[first + k];
            q[k] = -values[first + k];
        }
    };
    return signal;
}

std::vector<double> Tone(std::size_t points) {
    std::vector<double> values(points);
    for (std::size_t k = 0; k < points; ++k) {
        values[k] = 0.5 * std::sin(2 * std::numbers::pi * 8 * static_cast<double>(k) /
                                   static_cast<double>(points));
    }
    return values;
}

TEST(Plots, NoPeakIsLostBetweenTheColumns) {
    std::vector<double> values(50000, 0.0);
    values[0] = -0.25;
    values[33333] = 0.75;
    const plots::Envelope envelope = plots::EnvelopeOf(Mirrored(values), 100);
    ASSERT_EQ(envelope.i.size(), 100U);
    EXPECT_EQ(envelope.i[0].lowest, -0.25);
    EXPECT_EQ(envelope.i[66].highest, 0.75);
    EXPECT_EQ(envelope.q[66].lowest, -0.75);
    EXPECT_EQ(envelope.i[67].highest, 0);
    // A column reaches to the one before; fewer points than columns have one each.
    const plots::Envelope few = plots::EnvelopeOf(Mirrored({0.5, -0.5, 0.25}), 100);
    ASSERT_EQ(few.i.size(), 3U);
    EXPECT_EQ(few.i[1].highest, 0.5);
    EXPECT_EQ(few.i[1].lowest, -0.5);
    const std::vector<std::uint8_t> markers{0, 1, 2, 0, 0, 8};
    EXPECT_EQ(plots::MarkersOf(markers, 6, 2), (std::vector<std::uint8_t>{3, 8}));
}

TEST(Plots, TheConstellationHasThePointsAndTheWayBetweenThem) {
    const analysis::Signal signal = Mirrored({-0.9, 0.9, 0.8, 7});
    EXPECT_EQ(plots::CellsOfPoints(signal, 4),
              (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(plots::CellsOfPath(signal, 4),
              (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    // A long way is taken in stretches, from the first point on to near the last one.
    std::vector<double> values(3000000, -0.9);
    std::fill(values.end() - 175000, values.end(), 0.9);
    EXPECT_EQ(plots::CellsOfPath(Mirrored(std::move(values)), 2),
              (std::vector<std::uint8_t>{0, 0, 0, 1}));
}

TEST(Plots, TicksAreRoundNumbersWithinTheAxis) {
    EXPECT_EQ(plots::TicksOf({-1, 1, ""}, 8), (std::vector<double>{-1, -0.5, 0, 0.5, 1}));
    EXPECT_EQ(plots::TicksOf({-120, 0, ""}, 9),
              (std::vector<double>{-120, -100, -80, -60, -40, -20, 0}));
    EXPECT_EQ(plots::TicksOf({3, 17, ""}, 3), (std::vector<double>{5, 10, 15}));
    // Those with wide texts are further apart.
    plots::SvgCanvas svg(900, 200, plots::Theme::Light);
    plots::Panel(svg, {0, 0}, {872, 100}, {0, 1e6, ""}, {-1, 1, ""}).DrawFrame("");
    const std::string document = svg.Take();
    EXPECT_NE(document.find(">200000</text>"), std::string::npos);
    EXPECT_EQ(document.find(">100000</text>"), std::string::npos);
}

TEST(Plots, TheSheetIsTheSameOnEveryCanvas) {
    const analysis::Signal signal = Mirrored(Tone(4000));
    const std::vector<std::uint8_t> markers(4000, 1);
    const plots::PlotSubject subject{signal, markers, "a<b & c"};
    const plots::SheetContent content = plots::ContentOf(signal);
    const plots::SheetView view = plots::SheetView::Of(signal);
    plots::SvgCanvas svg(view.width, view.height, plots::Theme::Light);
    plots::DrawSheet(subject, content, view, svg);
    const std::string document = svg.Take();
    EXPECT_EQ(document.substr(0, 5), "<svg ");
    EXPECT_TRUE(document.ends_with("</svg>\n"));
    EXPECT_NE(document.find(">a&lt;b &amp; c</text>"), std::string::npos);
    EXPECT_NE(document.find(">M1</text>"), std::string::npos);
    EXPECT_EQ(document.find(">M2</text>"), std::string::npos);

    for (const int scale : {1, 2}) {
        plots::PixelCanvas pixels(view.width * scale, view.height * scale, scale,
                                  plots::Theme::Dark);
        plots::DrawSheet(subject, content, view, pixels);
        const auto& picture = pixels.Pixels();
        const plots::Palette palette = plots::PaletteOf(plots::Theme::Dark);
        // Half of full scale, in the time diagram's frame from 66 to 330, is reached and not
        // exceeded.
        const auto isDrawnAt = [&](int y) {
            const auto* const row = picture.Row(y * scale);
            return std::find(row, row + picture.width,
                             palette[static_cast<std::size_t>(plots::Ink::I)]) !=
                   row + picture.width;
        };
        EXPECT_TRUE(isDrawnAt(133));
        EXPECT_FALSE(isDrawnAt(128));
        const std::string png = plots::EncodePngFile(picture);
        EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
        EXPECT_TRUE(png.ends_with("IEND\xAE\x42\x60\x82"));
    }
}

TEST(Plots, TextHasTheWidthAndLettersOfTheTerminal) {
    const analysis::Signal signal = Mirrored(Tone(4000));
    const std::string ascii = plots::SheetAsText({signal, {}, ""}, 40, false);
    // I, Q, the spectrum and the CCDF, eight lines each under one that names it; the constellation
    // has sixteen.
    EXPECT_EQ(std::count(ascii.begin(), ascii.end(), '\n'), 53);
    // Half of full scale leaves the first two and the last two lines of I free.
    const std::size_t first = ascii.find('\n') + 1;
    EXPECT_EQ(ascii.substr(first, 41), std::string(40, ' ') + '\n');
    EXPECT_NE(ascii.substr(first + 2 * 41, 40).find('#'), std::string::npos);
    const std::string braille = plots::SheetAsText({signal, {}, ""}, 40, true);
    EXPECT_EQ(braille.substr(braille.find('\n') + 1, 3), "\xE2\xA0\x80");
}

}  // namespace
}  // namespace krv::tests
