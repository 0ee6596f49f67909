#include "suite/discovery/LocalNetworks.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

#include <cstring>
#include <memory>

namespace krv::suite {

std::vector<Ip4Address> InterfaceAddresses() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) {
        return {};
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> all(first, &freeifaddrs);
    std::vector<Ip4Address> addresses;
    for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
        if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET ||
            (each->ifa_flags & IFF_UP) == 0) {
            continue;
        }
        sockaddr_in address{};
        std::memcpy(&address, each->ifa_addr, sizeof address);
        std::memcpy(addresses.emplace_back().data(), &address.sin_addr, sizeof(Ip4Address));
    }
    return addresses;
}

}  // namespace krv::suite
