// What has to happen before an instrument's screen image can be fetched.
#pragma once

#include <cstdint>

#include "ports/desktop/EventPump.h"
#include "ports/desktop/MessageBoxes.h"
#include "ports/suite/ScreenImageServer.h"

namespace krv::image {

// The title of the boxes that are shown while a screen image is fetched.
inline constexpr const char* ScreenImageTitle = "Corvane KRV RF Signal Generator";

enum class Preparation : std::uint8_t {
    // The screen image can be fetched.
    Done,
    // The user didn't capture the screen.
    Declined,
    // The user captured the screen, but gave up when the instrument held no capture.
    NotFound,
};

// Prepares the capture. The user of an older model is asked to capture the screen by hand, again
// and again, until the instrument holds the capture or the user gives up. Throws Error.
[[nodiscard]] Preparation PrepareScreenImage(ports::ScreenImageServer& server,
                                             ports::EventPump& eventPump,
                                             ports::MessageBoxes& messageBoxes);

}  // namespace krv::image
