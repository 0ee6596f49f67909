// The address of a serial line: `DEVICE`, or `DEVICE?NAME=VALUE&...` where the line's settings
// aren't the usual ones.
//
//     serial://COM3                            19200 baud, 8 data bits, 1 stop bit
//     serial:///dev/ttyUSB0?baud=115200&flow=hardware
//
//     baud    bits a second
//     data    data bits: 8 (blocks hold bytes of any value)
//     stop    stop bits: 1, 1.5 or 2
//     parity  none, odd or even
//     flow    none or hardware (the characters of the other kind may stand in blocks)
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krv::suite {

enum class StopBits : std::uint8_t { One = 1, OneAndHalf = 2, Two = 3 };
enum class Parity : std::uint8_t { None, Odd, Even };

struct SerialAddress {
    std::string device;
    std::int32_t baudRate = 19200;
    StopBits stopBits = StopBits::One;
    Parity parity = Parity::None;
    bool hardwareFlow = false;

    static constexpr std::int32_t DataBits = 8;
};

// Takes what stands behind "serial://". Throws Error that names the address and what is wrong with
// it.
[[nodiscard]] SerialAddress ParseSerialAddress(const std::string& text);

// "COM1" to "COM999", in any case.
[[nodiscard]] bool IsNumberedPort(std::string_view device) noexcept;

}  // namespace krv::suite
