// The networks that this computer is in.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace krv::suite {

using Ip4Address = std::array<std::uint8_t, 4>;

// This computer's addresses, one for each network interface that is up, the loopback interface
// included. Empty where the system doesn't tell.
[[nodiscard]] std::vector<Ip4Address> InterfaceAddresses();

}  // namespace krv::suite
