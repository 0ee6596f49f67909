// The codes of a download as they are looked at.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "preview/CodeSignal.h"
#include "preview/WaveformView.h"

namespace krv::tests {
namespace {

using Codes = std::vector<std::int16_t>;

waveform::SharedCodes Shared(const Codes& codes) {
    SampleBuffer<std::int16_t> buffer(codes.size());
    buffer.Resize(codes.size());
    std::ranges::copy(codes, buffer.Data());
    return waveform::SharedCodes(std::move(buffer));
}

// As the signal's points, I and Q in turn.
std::vector<double> PointsOf(const waveform::DacCodes& codes) {
    const analysis::Signal signal = preview::SignalOfCodes(codes);
    std::vector<double> i(signal.points);
    std::vector<double> q(signal.points);
    signal.copy(0, i, q);
    std::vector<double> points;
    for (std::size_t k = 0; k < signal.points; ++k) {
        points.insert(points.end(), {i[k], q[k]});
    }
    return points;
}

TEST(WaveformView, CodesAreTheSharesOfFullScaleThatTheInstrumentPlays) {
    waveform::DacCodes codes;
    codes.isNewModel = true;
    codes.isSentInterleaved = true;
    codes.i = Shared({16384, -32768, 0, 8192});
    codes.markers = Shared({0, 15, 1});
    EXPECT_EQ(PointsOf(codes), (std::vector{0.5, -1.0, 0.0, 0.25}));
    EXPECT_EQ(preview::MarkersOfCodes(codes, 2), (std::vector<std::uint8_t>{0, 15}));
    // The shorter channel goes on with zero.
    codes.q = Shared({-16384});
    EXPECT_EQ(PointsOf(codes), (std::vector{0.5, -0.5, -1.0, 0.0, 0.0, 0.0, 0.25, 0.0}));

    waveform::DacCodes old;
    old.i = Shared({0, 8192, 12288});
    old.markers = Shared({1, 1, 1});
    EXPECT_EQ(PointsOf(old), (std::vector{-1.0, 0.0, 0.0, 0.0, 0.5, 0.0}));
    EXPECT_FALSE(preview::SignalOfCodes(old).hasQ);
    EXPECT_TRUE(preview::MarkersOfCodes(old, 3).empty()) << "they aren't sent";
    const std::string figures = preview::WaveformView(old).Figures();
    EXPECT_NE(figures.find("Codes:        0 to 12288, 3 different ones\n"), std::string::npos)
        << figures;
}

TEST(WaveformView, WheelAndKeysShowAPartAndStayWithinTheWaveform) {
    waveform::DacCodes codes;
    codes.i = Shared(Codes(1000, 8192));
    preview::WaveformView view(codes);
    EXPECT_EQ(view.RangeText(), "points 0 to 999 of 1000");
    view.Zoom(2, 0.5);
    EXPECT_EQ(view.RangeText(), "points 250 to 749 of 1000");
    view.Zoom(2, 1);
    EXPECT_EQ(view.RangeText(), "points 500 to 749 of 1000");
    view.Move(-1);
    EXPECT_EQ(view.RangeText(), "points 250 to 499 of 1000");
    view.Move(10);
    EXPECT_EQ(view.RangeText(), "points 750 to 999 of 1000");
    for (int step = 0; step < 100; ++step) {
        view.Zoom(1.25, 0);
    }
    EXPECT_EQ(view.RangeText(), "points 750 to 757 of 1000");
    view.Zoom(1e9, 0.5);
    EXPECT_EQ(view.RangeText(), "points 750 to 757 of 1000");
    view.Zoom(1e-9, 0.5);
    EXPECT_EQ(view.RangeText(), "points 0 to 999 of 1000");
    view.Zoom(4, 0);
    view.ShowAll();
    EXPECT_EQ(view.RangeText(), "points 0 to 999 of 1000");
}

TEST(WaveformView, ThePictureFillsItsPixelsAtAnyResolution) {
    waveform::DacCodes codes;
    Codes ramp(1000);
    for (std::size_t k = 0; k < ramp.size(); ++k) {
        ramp[k] = static_cast<std::int16_t>(16 * k);
    }
    codes.i = Shared(ramp);
    preview::WaveformView view(codes);
    const plots::Palette palette = plots::PaletteOf(plots::Theme::Light);
    const auto ink = palette.at(static_cast<std::size_t>(plots::Ink::I));
    for (const preview::PictureSize size :
         {preview::PictureSize{1000, 600, 1}, {1500, 900, 1.5}, {2000, 1200, 2}}) {
        const suite::picture::Picture whole = view.Draw(size, plots::Theme::Light);
        ASSERT_EQ(whole.width, size.width);
        ASSERT_EQ(whole.height, size.height);
        EXPECT_NE(std::ranges::find(whole.pixels, ink), whole.pixels.end());
    }
    // What has no room is cut off.
    EXPECT_EQ(view.Draw({300, 200, 2}, plots::Theme::Dark).pixels.size(), 60000U);
    // Where the axis begins and ends, in pixels of either resolution.
    EXPECT_EQ(preview::WaveformView::TimeShareAt({1000, 600, 1}, 90), 0);
    EXPECT_EQ(preview::WaveformView::TimeShareAt({1000, 600, 1}, 530), 0.5);
    EXPECT_EQ(preview::WaveformView::TimeShareAt({2000, 1200, 2}, 1940), 1);
}

}  // namespace
}  // namespace krv::tests
