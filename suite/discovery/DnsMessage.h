// DnsMessage: messages of the domain name system as far as services in the local network are found
// with them (RFC 1035, 6762 and 6763): questions, and records of which service is where.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krv::suite {

// The labels of a name, e.g. {"_scpi-raw", "_tcp", "local"}.
using DnsName = std::vector<std::string>;

// E.g. of "_scpi-raw._tcp.local".
[[nodiscard]] DnsName DnsNameOf(std::string_view dotted);
// Without regard to the case of ASCII letters.
[[nodiscard]] bool AreSameNames(const DnsName& one, const DnsName& other);

// A number beside these is one that nobody here needs.
enum class DnsType : std::uint16_t {
    Address = 1,
    Pointer = 12,
    Text = 16,
    Service = 33,
    Any = 255
};

struct DnsQuestion {
    DnsName name;
    DnsType type = DnsType::Any;
    // The answer shall come to the one who asks, and not to all.
    bool wantsUnicast = false;
};

struct DnsRecord {
    DnsName name;
    DnsType type = DnsType::Any;
    // Of Pointer and Service.
    DnsName target{};
    // Of Service.
    std::uint16_t port = 0;
    // Of Text: "KEY=VALUE" each.
    std::vector<std::string> texts{};
    // Of Address.
    std::array<std::uint8_t, 4> address{};
};

struct DnsMessage {
    std::uint16_t id = 0;
    bool isResponse = false;
    std::vector<DnsQuestion> questions{};
    std::vector<DnsRecord> answers{};
    std::vector<DnsRecord> additional{};
};

// Takes a message apart that may come from anywhere; records of other kinds are left out. Nothing
// for one that is damaged, or that has more in it than a message of such services.
[[nodiscard]] std::optional<DnsMessage> ReadDnsMessage(std::span<const std::byte> bytes);

// The records are good for so many seconds. Labels have at most 63 bytes, texts at most 255.
[[nodiscard]] std::string DnsMessageBytes(const DnsMessage& message, std::uint32_t secondsToLive);

}  // namespace krv::suite
