#include "suite/transport/SerialAddress.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "common/Text.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

constexpr std::string_view SerialForm =
    "write serial://DEVICE, for example serial://COM3 or serial:///dev/ttyS0?baud=9600";

template <class Value>
struct Choice {
    std::string_view text;
    Value value;
};

constexpr std::array<Choice<StopBits>, 3> StopBitsChoices{
    {{"1", StopBits::One}, {"1.5", StopBits::OneAndHalf}, {"2", StopBits::Two}}};
constexpr std::array<Choice<Parity>, 3> ParityChoices{
    {{"none", Parity::None}, {"odd", Parity::Odd}, {"even", Parity::Even}}};
constexpr std::array<Choice<bool>, 2> FlowChoices{{{"none", false}, {"hardware", true}}};
constexpr std::array<Choice<std::int32_t>, 1> DataChoices{{{"8", SerialAddress::DataBits}}};

// False when it is none of the choices.
template <class Choices, class Value>
bool Choose(const Choices& choices, std::string_view text, Value& value) {
    const auto chosen = std::find_if(choices.begin(), choices.end(),
                                     [text](const auto& choice) { return choice.text == text; });
    if (chosen == choices.end()) {
        return false;
    }
    value = chosen->value;
    return true;
}

bool ParseBaudRate(std::string_view text, std::int32_t& baudRate) {
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, baudRate);
    return failure == std::errc() && stop == end && baudRate > 0;
}

bool Set(SerialAddress& address, std::string_view name, std::string_view value) {
    std::int32_t dataBits = 0;
    return (name == "baud" && ParseBaudRate(value, address.baudRate)) ||
           (name == "data" && Choose(DataChoices, value, dataBits)) ||
           (name == "stop" && Choose(StopBitsChoices, value, address.stopBits)) ||
           (name == "parity" && Choose(ParityChoices, value, address.parity)) ||
           (name == "flow" && Choose(FlowChoices, value, address.hardwareFlow));
}

}  // namespace

SerialAddress ParseSerialAddress(const std::string& text) {
    const auto refuse = [&text](const std::string& what) {
        return AddressError("serial://" + text, what + "; " + std::string(SerialForm));
    };
    const auto question = text.find('?');
    SerialAddress address;
    address.device = text.substr(0, question);
    if (address.device.empty()) {
        throw refuse("it has no device");
    }
    // The system would look for it on another computer, and sign in there.
    if (address.device.find('\\') != std::string::npos) {
        throw refuse("its device is a path");
    }
    std::string_view settings = question == std::string::npos
                                    ? std::string_view()
                                    : std::string_view(text).substr(question + 1);
    while (!settings.empty()) {
        const auto end = std::min(settings.find('&'), settings.size());
        const std::string_view setting = settings.substr(0, end);
        const auto equals = setting.find('=');
        if (equals == std::string_view::npos ||
            !Set(address, setting.substr(0, equals), setting.substr(equals + 1))) {
            throw refuse("\"" + std::string(setting) + "\" is no setting of a serial line");
        }
        settings.remove_prefix(std::min(end + 1, settings.size()));
    }
    return address;
}

bool IsNumberedPort(std::string_view device) noexcept {
    constexpr std::string_view Digits = "0123456789";
    const std::string_view number = device.substr(std::min<std::size_t>(3, device.size()));
    return EqualIgnoringCase(device.substr(0, 3), "COM") && !number.empty() && number.size() <= 3 &&
           number.find_first_not_of(Digits) == std::string_view::npos && number.front() != '0';
}

}  // namespace krv::suite
