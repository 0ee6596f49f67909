// WaveformPreview: a second look at what a download would send, in a window beside the dialog.
#pragma once

#include <string>

#include "ports/desktop/FormScreen.h"
#include "waveform/data/DacCodes.h"

namespace krv::waveform {

// Ends its window with itself. The codes may be shared with the dialog, which leaves them as they
// are.
class WaveformPreview {
 public:
    virtual ~WaveformPreview() = default;
    // Shows the codes in place of those that it shows. The source says where they come from; the
    // owner is the application's window, or 0. Throws Error when there can't be a window.
    virtual void Show(const DacCodes& codes, const std::string& source,
                      ports::WindowHandle owner) = 0;
};

}  // namespace krv::waveform
