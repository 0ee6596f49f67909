// The devices of this computer. The platform's part is in the folders `posix` and `windows`.
#pragma once

#include <string>
#include <string_view>

namespace krv::suite {

// The name leads to a device of this computer, or to nothing; never to another computer, at which
// the system would sign in.
[[nodiscard]] bool IsLocalDevice(std::string_view name) noexcept;

// The serial device that has this number where lines are counted from 1.
[[nodiscard]] std::string SerialDevice(int number);

}  // namespace krv::suite
