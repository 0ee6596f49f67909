// Figures against closed forms: tones, noise, known windows.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "analysis/Ccdf.h"
#include "analysis/Measures.h"
#include "analysis/Spectrum.h"

namespace krv::tests {
namespace {

using analysis::Signal;
using Points = std::vector<std::complex<double>>;

Signal SignalOf(Points points, double fullScaleCode = 0) {
    Signal signal;
    signal.points = points.size();
    signal.fullScaleCode = fullScaleCode;
    signal.copy = [points = std::move(points)](std::size_t first, std::span<double> i,
                                               std::span<double> q) {
        for (std::size_t k = 0; k < i.size(); ++k) {
            i[k] = points[first + k].real();
            q[k] = points[first + k].imag();
        }
    };
    return signal;
}

// `turns` in so many points, each times the amplitude; any number of them.
Points Tones(std::size_t count, const std::vector<std::pair<double, double>>& turnsAndAmplitudes) {
    Points points(count);
    for (std::size_t k = 0; k < count; ++k) {
        for (const auto& [turns, amplitude] : turnsAndAmplitudes) {
            points[k] +=
                std::polar(amplitude, 2 * std::numbers::pi * turns * static_cast<double>(k) /
                                          static_cast<double>(count));
        }
    }
    return points;
}

// Longer than a block, so that blocks meet within.
constexpr std::size_t Long = 40000;

TEST(Measures, AToneHasTheLevelsOfATone) {
    Points points = Tones(Long, {{7, 0.5}});
    for (std::complex<double>& point : points) {
        point += std::complex<double>(0.125, -0.25);
    }
    const analysis::Measures shifted = Measure(SignalOf(points));
    EXPECT_NEAR(shifted.meanI, 0.125, 1e-12);
    EXPECT_NEAR(shifted.meanQ, -0.25, 1e-12);
    const analysis::Measures tone = Measure(SignalOf(Tones(Long, {{7, 0.5}})));
    EXPECT_NEAR(tone.peak, 0.5, 1e-12);
    EXPECT_NEAR(tone.rms, 0.5, 1e-12);
    EXPECT_NEAR(tone.papr.value(), 0, 1e-9);
    EXPECT_NEAR(tone.gainImbalance.value(), 0, 1e-9);
    EXPECT_NEAR(tone.quadratureError.value(), 0, 1e-9);
    // It goes on at its end as it does everywhere.
    EXPECT_NEAR(tone.wrapStep, tone.largestStep, 1e-12);
    EXPECT_NEAR(tone.largestStep, std::sin(7 * std::numbers::pi / Long), 1e-12);
    EXPECT_EQ(tone.clipped, 0U);
    EXPECT_FALSE(tone.codes.has_value());
}

TEST(Measures, TwoTonesAreThreeDecibelsAboveTheirMean) {
    const analysis::Measures two = Measure(SignalOf(Tones(Long, {{10, 0.4}, {-30, 0.4}})));
    EXPECT_NEAR(two.papr.value(), 10 * std::log10(2.0), 1e-9);
    EXPECT_NEAR(two.peak, 0.8, 1e-9);
}

TEST(Measures, UnequalAndSkewedChannelsShow) {
    Points points(Long);
    for (std::size_t k = 0; k < Long; ++k) {
        const double turn = 2 * std::numbers::pi * 9 * static_cast<double>(k) / Long;
        points[k] = {std::cos(turn), 0.5 * std::sin(turn + 5 * std::numbers::pi / 180)};
    }
    const analysis::Measures skewed = Measure(SignalOf(points));
    EXPECT_NEAR(skewed.gainImbalance.value(), 20 * std::log10(2.0), 1e-9);
    EXPECT_NEAR(skewed.quadratureError.value(), 5, 1e-9);
    EXPECT_FALSE(Measure(SignalOf(Points(10, {0.5, 0.25}))).gainImbalance.has_value());
    EXPECT_FALSE(Measure(SignalOf(Points(10))).papr.has_value());
}

TEST(Measures, ClippedCodesAreCountedByPointsAndRuns) {
    Points points(Long, {0.25, -0.25});
    for (const std::size_t at : {0U, 16383U, 16384U, 16385U}) {
        points[at] = {32767.0 / 32768, 0};
    }
    points[39999] = {0, -1};
    const analysis::Measures codes = Measure(SignalOf(points, 32768));
    EXPECT_EQ(codes.clipped, 5U);
    EXPECT_EQ(codes.longestClip, 3U);
    EXPECT_EQ(codes.codes->smallest, -32768);
    EXPECT_EQ(codes.codes->largest, 32767);
    EXPECT_EQ(codes.codes->different, 5U);
    // The same numbers, were they no codes.
    EXPECT_EQ(Measure(SignalOf(points)).clipped, 1U);
}

TEST(Measures, TheSpectrumHoldsThePowerWhereTheTonesAre) {
    // Of 1024 bands: in the middle of band 100 above and of band 300 below.
    const analysis::Spectrum spectrum =
        SpectrumOf(SignalOf(Tones(10240, {{1000, 0.8}, {-3000, 0.1}})));
    ASSERT_EQ(spectrum.power.size(), 1024U);
    EXPECT_NEAR(std::accumulate(spectrum.power.begin(), spectrum.power.end(), 0.0), 0.65, 1e-9);
    // A Hann window leaves two thirds of the power in the middle of three bands.
    EXPECT_NEAR(spectrum.power[512 + 100], 0.64 * 2 / 3, 1e-9);
    EXPECT_NEAR(spectrum.power[512 + 101], 0.64 / 6, 1e-9);
    EXPECT_NEAR(spectrum.power[512 - 300], 0.01 * 2 / 3, 1e-9);
    // A tone's level is its own, not the band's.
    EXPECT_NEAR(spectrum.LevelOf(spectrum.power[512 + 100]), 20 * std::log10(0.8), 1e-9);
    EXPECT_NEAR(spectrum.FrequencyOf(512 - 300), -300.0 / 1024, 1e-12);
    EXPECT_NEAR(OccupiedBandwidth(spectrum), 400.0 / 1024, 2.0 / 1024);
    for (const std::size_t few : {1U, 3U, 4U, 17U}) {
        const analysis::Spectrum small = SpectrumOf(SignalOf(Points(few, 0.5)));
        EXPECT_NEAR(std::accumulate(small.power.begin(), small.power.end(), 0.0), 0.25, 1e-9)
            << few;
    }
    EXPECT_EQ(OccupiedBandwidth(SpectrumOf(SignalOf(Points(8)))), 0);
    // The last points count like the others.
    Points pulse(4100);
    pulse.back() = 1;
    EXPECT_NEAR(OccupiedBandwidth(SpectrumOf(SignalOf(pulse))), 0.99, 0.001);
}

TEST(Measures, NoiseHasTheBandwidthAndTheCcdfOfNoise) {
    std::mt19937 random(17);
    std::normal_distribution<double> value(0, 0.1);
    Points points(400000);
    for (std::complex<double>& point : points) {
        point = {value(random), value(random)};
    }
    const Signal noise = SignalOf(points);
    EXPECT_NEAR(OccupiedBandwidth(SpectrumOf(noise)), 0.99, 0.005);
    const analysis::Ccdf ccdf = CcdfOf(noise);
    for (const std::size_t decibels : {0U, 3U, 6U, 9U}) {
        const double expected = std::exp(-std::pow(10, static_cast<double>(decibels) / 10));
        EXPECT_NEAR(ccdf.shares[10 * decibels], expected, 5 * std::sqrt(expected / 400000))
            << decibels;
    }
    EXPECT_EQ(ccdf.shares.back(), 0);
    // A constant exceeds its mean nowhere; half of the points exceed it by 10 lg 2.
    EXPECT_EQ(CcdfOf(SignalOf(Points(10, 0.5))).shares, std::vector<double>{0});
    const analysis::Ccdf half = CcdfOf(SignalOf({0.0, 1.0}));
    EXPECT_EQ(half.shares[30], 0.5);
    EXPECT_EQ(half.shares[31], 0);
    EXPECT_EQ(half.shares.size(), 32U);
}

}  // namespace
}  // namespace krv::tests
