// ResourceName: what programs of instruments call an instrument, in any case of the letters.
//
//     GPIB0::19::INSTR                      at a GPIB interface; a secondary address may follow
//     USB0::0x1AB1::0x0641::SERIAL::INSTR   maker, model and serial number
//     TCPIP0::HOST::inst0::INSTR            over VXI-11; hislip0 instead of inst0 for HiSLIP
//     TCPIP0::HOST::5025::SOCKET            a port, as tcp://HOST:5025
//     ASRL3::INSTR                          a serial line, as serial://COM3?baud=9600
//
// The interface's number and ::INSTR may be left out. The settings of a serial line may stand
// behind a question mark, see SerialAddress.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krv::suite {

struct ResourceName {
    enum class Kind : std::uint8_t { Gpib, Usb, Lan, Socket, Serial };

    Kind kind = Kind::Gpib;
    // Of a network, without brackets.
    std::string computer;
    // Of a socket.
    std::string port;
    // Of a serial line: its number, or the system's name for it; and its settings.
    std::string device;
    std::string settings;
};

// The text begins as such a name does. An address with a scheme is none.
[[nodiscard]] bool IsResourceName(std::string_view text);
// Throws Error that names what is wrong.
[[nodiscard]] ResourceName ParseResourceName(const std::string& text);
// The address that leads there: `tcp://` or `serial://` where these can, otherwise `visa://`.
// Throws Error as above.
[[nodiscard]] std::string AddressOfResource(const std::string& text);

}  // namespace krv::suite
