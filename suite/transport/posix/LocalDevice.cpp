#include "suite/transport/LocalDevice.h"

namespace krv::suite {

bool IsLocalDevice(std::string_view name) noexcept {
    // A name alone, or a path from the root on.
    return name.find('/') == std::string_view::npos || name.starts_with('/');
}

std::string SerialDevice(int number) {
    return "/dev/ttyS" + std::to_string(number - 1);
}

}  // namespace krv::suite
