// The serial ports of this computer.
#pragma once

#include <string>
#include <vector>

namespace krv::suite {

// Their names, "COM3" for instance, in order.
[[nodiscard]] std::vector<std::string> SerialPorts();

}  // namespace krv::suite
