// What an instrument answers when it is asked for by multicast DNS: its records, and which of them
// a question is about.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/discovery/DnsMessage.h"
#include "suite/discovery/LocalNetworks.h"

namespace krv::suite {

struct ServedInstrument {
    std::string maker;
    std::string model;
    std::string serialNumber;
    std::string firmware;
    Ip4Address address{};
    struct Service {
        // E.g. "_scpi-raw._tcp.local".
        std::string_view type;
        std::uint16_t port;
    };
    std::vector<Service> services;
};

[[nodiscard]] std::vector<DnsRecord> ServiceRecords(const ServedInstrument& instrument);

// The records that were asked for, and the others as additional ones; nothing when none was asked
// for. A question from another port than that of multicast DNS is answered with its id and itself.
[[nodiscard]] std::optional<DnsMessage> AnswerTo(const DnsMessage& question,
                                                 const std::vector<DnsRecord>& records,
                                                 bool isFromOtherPort);

}  // namespace krv::suite
