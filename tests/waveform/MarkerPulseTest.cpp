#include "waveform/readers/MarkerPulse.h"

#include <gtest/gtest.h>

#include <string>

#include "common/Error.h"

namespace krv::tests {

using namespace waveform;
namespace {

// The pulse as text, one character an index.
std::string Pulse(std::int16_t start, std::int16_t length, std::int32_t count) {
    const InternalValues markers = BuildMarkerPulse(start, length, count);
    std::string text;
    for (const std::int16_t value : markers.codes.Span()) {
        text += value == 0 ? '.' : value == 1 ? '1' : '?';
    }
    EXPECT_EQ(markers.range.smallest, text.find('.') == std::string::npos ? 1 : 0) << text;
    EXPECT_EQ(markers.range.largest, text.find('1') == std::string::npos ? 0 : 1) << text;
    return text;
}

TEST(MarkerPulse, StandsAtItsPlaceAndIsCutAtTheEnd) {
    EXPECT_EQ(Pulse(0, 0, 4), ".....");
    EXPECT_EQ(Pulse(0, 2, 4), "11...");
    EXPECT_EQ(Pulse(2, 1, 4), "..1..");
    EXPECT_EQ(Pulse(2, 3, 4), "..111");
    EXPECT_EQ(Pulse(2, 32767, 4), "..111");
    EXPECT_EQ(Pulse(0, 32767, 4), "11111");
    EXPECT_EQ(Pulse(5, 1, 4), ".....");
    EXPECT_EQ(Pulse(32767, 32767, 4), ".....");
    EXPECT_EQ(Pulse(0, 0, 0), ".");
    EXPECT_THROW(static_cast<void>(BuildMarkerPulse(-1, 1, 3)), Error);
    EXPECT_THROW(static_cast<void>(BuildMarkerPulse(1, -1, 3)), Error);
    EXPECT_THROW(static_cast<void>(BuildMarkerPulse(1, 1, -1)), Error);
}

}  // namespace
}  // namespace krv::tests
