#include "waveform/checks/MarkerPulse.h"

#include <gtest/gtest.h>

#include <string>

#include "common/Error.h"

namespace krv::tests {

using namespace waveform;
namespace {

// The pulse as text, one character an index.
std::string Pulse(std::int16_t start, std::int16_t length, std::int32_t count) {
    SampleBuffer<double> markers(100);
    markers.Resize(100);
    markers[3] = 7;
    waveform::BuildMarkerPulse(markers, start, length, count);
    std::string text;
    for (const double value : markers.Span()) {
        text += value == 0.0 ? '.' : value == 1.0 ? '1' : '?';
    }
    return text;
}

TEST(MarkerPulse, StandsAtItsPlaceAndIsCutAtTheEnd) {
    EXPECT_EQ(Pulse(0, 0, 4), ".....");
    EXPECT_EQ(Pulse(0, 2, 4), "11...");
    EXPECT_EQ(Pulse(2, 1, 4), "..1..");
    EXPECT_EQ(Pulse(2, 3, 4), "..111");
    EXPECT_EQ(Pulse(2, 32767, 4), "..111");
    EXPECT_EQ(Pulse(5, 1, 4), ".....");
    EXPECT_EQ(Pulse(32767, 32767, 4), ".....");
    EXPECT_EQ(Pulse(0, 0, 0), ".");
}

TEST(MarkerPulse, RefusesNegativeNumbersAndKeepsTheArray) {
    SampleBuffer<double> markers;
    waveform::BuildMarkerPulse(markers, 1, 1, 3);
    const auto refused = [&](std::int16_t start, std::int16_t length, std::int32_t count) {
        try {
            waveform::BuildMarkerPulse(markers, start, length, count);
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(refused(-1, 1, 3), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(refused(1, -1, 3), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(refused(1, 1, -1), ErrorNumber::SubscriptOutOfRange);
    ASSERT_EQ(markers.Size(), 4u);
    EXPECT_EQ(markers[1], 1.0);
}

}  // namespace
}  // namespace krv::tests
