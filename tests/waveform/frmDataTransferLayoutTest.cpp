#include <algorithm>
#include <vector>

#include "tests/waveform/DialogTest.h"

namespace krv::tests {

using namespace waveform;
namespace {

using forms::Control;
using forms::ControlKind;
using forms::Place;

constexpr int TwipsPerPixel = 15;

bool HasWindow(const Control& control) {
    return control.Kind() != ControlKind::Timer && control.Kind() != ControlKind::CommonDialog;
}

int Right(const Place& place) {
    return place.left + place.width;
}
int Bottom(const Place& place) {
    return place.top + place.height;
}

bool Overlap(const Place& a, const Place& b) {
    return a.left < Right(b) && b.left < Right(a) && a.top < Bottom(b) && b.top < Bottom(a);
}

TEST_F(DialogTest, LiesInsideItsContainersWithoutOverlap) {
    for (const Control* control : m_dialog.Controls()) {
        if (!HasWindow(*control)) {
            continue;
        }
        SCOPED_TRACE(control->Name());
        const Place place = control->Place;
        const Place outer =
            control->Container() != nullptr ? control->Container()->Place : m_dialog.Place;
        const int captionHeight = control->Container() != nullptr ? 16 * TwipsPerPixel : 0;
        EXPECT_GT(place.left, 0);
        EXPECT_GT(place.top, captionHeight);
        EXPECT_LT(Right(place), outer.width);
        EXPECT_LT(Bottom(place), outer.height);
        for (const Control* other : m_dialog.Controls()) {
            const bool pages =
                (control == &m_dialog.frameFileFolders) != (other == &m_dialog.frameFileFolders) &&
                (control == &m_dialog.frameSpreadSheet) != (other == &m_dialog.frameSpreadSheet);
            if (other != control && HasWindow(*other) && !pages &&
                other->Container() == control->Container()) {
                EXPECT_FALSE(Overlap(place, other->Place)) << "over " << other->Name();
            }
        }
    }
    EXPECT_EQ(m_dialog.frameFileFolders.Place.Get(), m_dialog.frameSpreadSheet.Place.Get());
}

}  // namespace
}  // namespace krv::tests
