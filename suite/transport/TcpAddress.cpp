#include "suite/transport/TcpAddress.h"

#include <charconv>
#include <string_view>

#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

constexpr std::string_view TcpForm = "write tcp://HOST:PORT, for example tcp://192.168.0.10:5025";

Error Refusal(const std::string& text, std::string_view what) {
    return AddressError("tcp://" + text, std::string(what) + "; " + std::string(TcpForm));
}

// Where the colon in front of the port is.
std::size_t PortSeparator(const std::string& text) {
    if (text.starts_with('[')) {
        const auto bracket = text.find("]:");
        return bracket == std::string::npos ? bracket : bracket + 1;
    }
    const auto colon = text.find(':');
    if (colon != text.rfind(':')) {
        throw Refusal(text, "an IPv6 address stands in brackets");
    }
    return colon;
}

std::uint16_t ParsePort(const std::string& text, std::string_view digits) {
    std::uint16_t port = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, failure] = std::from_chars(digits.data(), end, port);
    if (failure != std::errc() || stop != end || port == 0) {
        throw Refusal(text, "its port is not a number from 1 to 65535");
    }
    return port;
}

}  // namespace

std::string TcpAddress::Text() const {
    const bool bracketed = computer.find(':') != std::string::npos;
    return "tcp://" + (bracketed ? '[' + computer + ']' : computer) + ':' + std::to_string(port);
}

TcpAddress ParseTcpAddress(const std::string& text) {
    const std::size_t separator = PortSeparator(text);
    if (separator == std::string::npos) {
        throw Refusal(text, "it has no port");
    }
    std::string computer = text.substr(0, separator);
    if (computer.starts_with('[')) {
        computer = computer.substr(1, computer.size() - 2);
    }
    if (computer.empty() || computer.find_first_of(" /[]") != std::string::npos) {
        throw Refusal(text, computer.empty() ? "it has no host" : "its host is not a host's name");
    }
    return {computer, ParsePort(text, std::string_view(text).substr(separator + 1))};
}

}  // namespace krv::suite
