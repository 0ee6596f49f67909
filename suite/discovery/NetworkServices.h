// NetworkServices: instruments that announce themselves in the networks that this computer is in,
// by multicast DNS.
//
// The search sends one question into each network and listens for a short time to what is answered
// to it alone. It needs no service of the system. Answers may come from anybody: they are limited,
// and name addresses to try, nothing more.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suite/discovery/AddressTaker.h"
#include "suite/discovery/DnsMessage.h"
#include "suite/discovery/LocalNetworks.h"

namespace krv::suite {

// The port at which instruments listen for SCPI messages.
inline constexpr std::uint16_t UsualPort = 5025;

inline constexpr std::array<std::uint8_t, 4> MulticastDnsGroup{224, 0, 0, 251};
inline constexpr std::uint16_t MulticastDnsPort = 5353;

// SCPI messages over a bare TCP connection, and instruments that may have that besides.
inline constexpr std::string_view ScpiService = "_scpi-raw._tcp.local";
inline constexpr std::string_view LxiService = "_lxi._tcp.local";
inline constexpr std::string_view Vxi11Service = "_vxi-11._tcp.local";

// The question for all three.
[[nodiscard]] DnsMessage ServiceQuestion(std::uint16_t id);

// The addresses that a response names, `tcp://HOST:PORT`: where it has no port for SCPI messages,
// the usual one. What has no address of its own has the sender's.
[[nodiscard]] std::vector<std::string> AddressesIn(const DnsMessage& response,
                                                   const Ip4Address& sender);

// Asks and listens for so long. No address comes twice.
void FindNetworkAddresses(const AddressTaker& take,
                          std::chrono::milliseconds patience = std::chrono::milliseconds(500),
                          const std::vector<Ip4Address>& interfaces = InterfaceAddresses());

}  // namespace krv::suite
