#include <gtest/gtest.h>

#include <algorithm>

#include "common/progress/frmCallback.h"
#include "tests/support/ScriptedScreen.h"
#include "waveform/checks/ChannelConversion.h"

namespace krv::tests {

using namespace waveform;
namespace {

// Every four blocks are a thousandth here.
TEST(ConversionProgress, OfALargeWaveformMovesByThousandthsAndPollsAsOften) {
    constexpr int Blocks = 4000;
    constexpr int BlockSize = waveform::SampleSource::BlockSize;
    ScriptedScreen screen;
    progress::frmCallback dialog(screen, screen);
    RunProgress rows(dialog);
    dialog.Load();
    const float& shown = dialog.ProgressBar1[1].Value;
    waveform::ConversionProgress progress(rows, std::int64_t{Blocks} * BlockSize);
    screen.Changes.clear();
    for (int block = 1; block <= Blocks; ++block) {
        progress.Advance(BlockSize);
        ASSERT_EQ(shown, static_cast<float>(block / 4 * 4 * BlockSize));
    }
    EXPECT_EQ(std::ranges::count(screen.Changes, "ProgressBar1(1) Value"), 1000);
    EXPECT_EQ(screen.PumpCount, Blocks);
}

}  // namespace
}  // namespace krv::tests
