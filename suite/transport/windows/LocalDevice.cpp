#include "suite/transport/LocalDevice.h"

namespace krv::suite {

bool IsLocalDevice(std::string_view name) noexcept {
    // Behind any separator the system may go anywhere, as with UNC/SERVER/SHARE.
    return name.find_first_of("/\\") == std::string_view::npos;
}

std::string SerialDevice(int number) {
    return "COM" + std::to_string(number);
}

}  // namespace krv::suite
