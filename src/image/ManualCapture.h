// What has to happen before an instrument's screen image can be fetched.
#pragma once

#include "ports/desktop/EventPump.h"
#include "ports/desktop/MessageBoxes.h"
#include "ports/suite/ScreenImageServer.h"

namespace krv::image {

// The title of the boxes that are shown while a screen image is fetched.
inline constexpr const char* ScreenImageTitle = "Corvane KRV RF Signal Generator";

// Prepares the capture. The user of an older model is asked to capture the screen by hand, again
// and again, until the instrument holds the capture: false when the user gives up. Throws Error.
[[nodiscard]] bool PrepareScreenImage(ports::ScreenImageServer& server, ports::EventPump& eventPump,
                                      ports::MessageBoxes& messageBoxes);

}  // namespace krv::image
