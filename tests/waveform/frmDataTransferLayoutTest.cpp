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

TEST_F(DialogTest, ShowsTheTextsAsGiven) {
    Expect({
        "TextQFileName '' locked notab grey tip='Enter the file containing the waveform data for "
        "the Q  data points. '",
        "cboFileTypeWF 'ASCII' disabled tip='Select the file type.  Includes ASCII, Binary (Little "
        "Endian), Binary (Big Endian).'",
        "CommandCaptureSelectionI picture=CaptureSelection tip='Capture cell range you entered in "
        "the Data Range, or the highlighted cells from your Excel Spreadsheet'",
        "CommandCaptureSelectionQ picture=CaptureSelection tip='Capture cell range you entered in "
        "the data range, or the highlighted cells from your Excel Spreadsheet.'",
        "CommandValidate 'Validate Files' tip='Reads the input files, counts the points, and "
        "validates the data.  Does not initate download.'",
        "cmdDownload 'Start Download' tip='Initates download to the instrument'",
        "TextMarkerLength '0' tip='Enter the width, in points, of your desired marker pulse.  "
        "Specify zero to omit the marker pulse.'",
        "labelScaleFactor 'Scale factor' tip='Scales input waveform to this percentage of the full "
        "output range of the KRV'",
        "commondialogQBrowse 'Browse for Q - File Name'",
    });
    using Items = std::vector<std::string>;
    EXPECT_EQ(m_dialog.cboWaveformType.Items.Get(),
              (Items{"Waveform", "14-bit internal values", "16-bit internal values"}));
    EXPECT_EQ(m_dialog.cboWaveformTypeSS.Items.Get(),
              (Items{"Waveform", "14-bit internal values", "16-bit  internal values"}));
    EXPECT_EQ(m_dialog.cboFileTypeWFSS.Items.Get(),
              (Items{"ASCII", "Binary-Little Endian", "Binary-Big Endian"}));
    EXPECT_TRUE(m_dialog.cmdDownload.IsDefault);
    EXPECT_TRUE(m_dialog.cmdCancel.IsCancel);
}

}  // namespace
}  // namespace krv::tests
