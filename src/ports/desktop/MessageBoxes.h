// Modal message boxes, as the platform shows them.
#pragma once

#include <cstdint>
#include <string>

namespace krv::ports {

// Critical: something has failed. Exclamation: a warning that the user may override, an
// instruction, an entry that must be put right, what the instrument reports. None: how it stands,
// how it ended.
enum class MessageIcon : std::uint8_t { None, Critical, Exclamation };
enum class MessageButtons : std::uint8_t { Ok, OkCancel, YesNo, RetryCancel };
enum class MessageAnswer : std::uint8_t { Ok, Cancel, Yes, No, Retry };

struct Message {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
};

class MessageBoxes {
 public:
    virtual ~MessageBoxes() = default;
    // Shows the box, waits for the user and returns the button pressed. Closing a box counts as
    // Cancel, or as Ok where Ok is the only button, or as No where the buttons are Yes and No.
    virtual MessageAnswer Show(const Message& message) = 0;
};

}  // namespace krv::ports
