// The address of a TCP transport: `HOST:PORT`, where HOST is a computer's name, an IPv4 address or
// an IPv6 address in brackets.
#pragma once

#include <cstdint>
#include <string>

namespace krv::suite {

struct TcpAddress {
    // Without brackets.
    std::string computer;
    std::uint16_t port = 0;
    // With its scheme, e.g. "tcp://[::1]:5025".
    [[nodiscard]] std::string Text() const;
};

// Takes what stands behind "tcp://". Throws Error that names the address and what is wrong with it.
[[nodiscard]] TcpAddress ParseTcpAddress(const std::string& text);

}  // namespace krv::suite
