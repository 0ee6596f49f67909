#include "suite/transport/ResourceName.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "common/Error.h"
#include "common/Text.h"
#include "suite/transport/LocalDevice.h"
#include "suite/transport/TcpAddress.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

using ResourceKind = ResourceName::Kind;

struct KnownInterface {
    std::string_view name;
    ResourceKind kind;
};
constexpr std::array<KnownInterface, 4> KnownInterfaces{{{"GPIB", ResourceKind::Gpib},
                                                         {"USB", ResourceKind::Usb},
                                                         {"TCPIP", ResourceKind::Lan},
                                                         {"ASRL", ResourceKind::Serial}}};

constexpr std::string_view ResourceForms =
    "; write GPIB0::19::INSTR, USB0::MAKER::MODEL::SERIAL::INSTR, TCPIP0::HOST::inst0::INSTR, "
    "TCPIP0::HOST::PORT::SOCKET or ASRL1::INSTR";

const KnownInterface* InterfaceOf(std::string_view text) {
    const auto found = std::ranges::find_if(KnownInterfaces, [text](const KnownInterface& each) {
        return EqualIgnoringCase(text.substr(0, each.name.size()), each.name);
    });
    return found == KnownInterfaces.end() ? nullptr : &*found;
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Between the double colons; those in brackets belong to a computer's number.
std::vector<std::string> PartsOf(std::string_view text) {
    std::vector<std::string> parts{""};
    bool inBrackets = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        inBrackets = text[at] == '[' || (inBrackets && text[at] != ']');
        if (!inBrackets && text.substr(at, 2) == "::") {
            parts.emplace_back();
            ++at;
        } else {
            parts.back() += text[at];
        }
    }
    return parts;
}

// Primary and secondary addresses.
bool IsGpibAddress(const std::string& part) {
    return IsNumber(part) && part.size() <= 2 && std::stoi(part) <= 30;
}

// What an interface's own parts look like, without the class behind them.
bool IsComplete(ResourceKind kind, const std::vector<std::string>& parts) {
    const auto isEmpty = [](const std::string& part) { return part.empty(); };
    if (std::ranges::any_of(parts, isEmpty)) {
        return false;
    }
    switch (kind) {
        case ResourceKind::Gpib:
            return (parts.size() == 1 || parts.size() == 2) &&
                   std::ranges::all_of(parts, IsGpibAddress);
        case ResourceKind::Usb:
            return parts.size() == 3 || (parts.size() == 4 && IsNumber(parts[3]));
        case ResourceKind::Lan:
            return (parts.size() == 1 || parts.size() == 2) && !IsNumber(parts.back());
        case ResourceKind::Socket:
            return parts.size() == 2 && IsNumber(parts[1]);
        default:
            return parts.empty();
    }
}

// Takes the class off the end of the parts. False where there is none.
bool TakeClass(std::vector<std::string>& parts, std::string_view name) {
    if (parts.empty() || !EqualIgnoringCase(parts.back(), name)) {
        return false;
    }
    parts.pop_back();
    return true;
}

Error NameRefusal(const std::string& text, ResourceKind kind,
                  const std::vector<std::string>& parts) {
    if (kind == ResourceKind::Lan && parts.size() == 2 && IsNumber(parts[1])) {
        return AddressError(text, "a port takes ::SOCKET behind it; write TCPIP0::" + parts[0] +
                                      "::" + parts[1] + "::SOCKET");
    }
    return AddressError(text, "it is no complete name of a resource" + std::string(ResourceForms));
}

std::string WithoutBrackets(const std::string& computer) {
    const bool isBracketed = computer.starts_with('[') && computer.ends_with(']');
    return isBracketed ? computer.substr(1, computer.size() - 2) : computer;
}

// A number that lines are counted by, or a device's name.
bool IsSerialDevice(const std::string& device) {
    return IsNumber(device) ? device.size() <= 3 && device.front() != '0' : !device.empty();
}

std::string SerialAddressOf(const ResourceName& name) {
    // VISA's lines have 9600 baud until a program sets them otherwise.
    int number = 0;
    const std::string& device = name.device;
    std::from_chars(device.data(), device.data() + device.size(), number);
    return "serial://" + (IsNumber(device) ? SerialDevice(number) : device) + "?baud=9600" +
           (name.settings.empty() ? "" : '&' + name.settings);
}

}  // namespace

bool IsResourceName(std::string_view text) {
    text = TrimBlanks(text);
    const KnownInterface* const known = InterfaceOf(text);
    if (known == nullptr || text.find("://") != std::string_view::npos) {
        return false;
    }
    text = text.substr(0, text.find('?'));
    const bool isNumberedLine =
        known->kind == ResourceKind::Serial && IsNumber(text.substr(known->name.size()));
    return isNumberedLine || text.find("::") != std::string_view::npos;
}

ResourceName ParseResourceName(const std::string& text) {
    const std::string_view trimmed = TrimBlanks(text);
    const std::size_t question = std::min(trimmed.find('?'), trimmed.size());
    const KnownInterface* const known = InterfaceOf(trimmed);
    if (known == nullptr) {
        throw NameRefusal(text, ResourceKind::Gpib, {});
    }
    ResourceName name;
    name.kind = known->kind;
    std::vector<std::string> parts = PartsOf(trimmed.substr(0, question));
    const std::string number = parts.front().substr(known->name.size());
    parts.erase(parts.begin());
    if (name.kind == ResourceKind::Lan && TakeClass(parts, "SOCKET")) {
        name.kind = ResourceKind::Socket;
    } else {
        TakeClass(parts, "INSTR");
    }
    const bool isSerial = name.kind == ResourceKind::Serial;
    const bool isNumbered = isSerial ? IsSerialDevice(number) : number.empty() || IsNumber(number);
    if (!isNumbered || !IsComplete(name.kind, parts) || (question < trimmed.size() && !isSerial)) {
        throw NameRefusal(text, name.kind, parts);
    }
    if (isSerial) {
        name.device = number;
        name.settings = trimmed.substr(std::min(question + 1, trimmed.size()));
    } else if (name.kind == ResourceKind::Lan || name.kind == ResourceKind::Socket) {
        name.computer = WithoutBrackets(parts[0]);
        name.port = name.kind == ResourceKind::Socket ? parts[1] : "";
    }
    return name;
}

std::string AddressOfResource(const std::string& text) {
    const ResourceName name = ParseResourceName(text);
    switch (name.kind) {
        case ResourceKind::Socket: {
            const bool isNumber = name.computer.find(':') != std::string::npos;
            const std::string computer = isNumber ? '[' + name.computer + ']' : name.computer;
            return ParseTcpAddress(computer + ':' + name.port).Text();
        }
        case ResourceKind::Serial:
            return SerialAddressOf(name);
        default:
            return "visa://" + std::string(TrimBlanks(text));
    }
}

}  // namespace krv::suite
