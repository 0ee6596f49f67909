#include "suite/discovery/LocalNetworks.h"

#include <winsock2.h>

#include <iphlpapi.h>

#include <cstddef>
#include <cstring>
#include <memory>

namespace krv::suite {
namespace {

// What the system tells of all adapters; null when it doesn't.
std::unique_ptr<std::byte[]> AdapterList() {
    constexpr ULONG Flags = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST |
                            GAA_FLAG_SKIP_DNS_SERVER | GAA_FLAG_SKIP_FRIENDLY_NAME;
    ULONG size = 16384;
    // The list may have grown since its size was asked for.
    for (int tries = 0; tries < 4; ++tries) {
        auto list = std::make_unique<std::byte[]>(size);
        const ULONG failure = GetAdaptersAddresses(
            AF_INET, Flags, nullptr, reinterpret_cast<IP_ADAPTER_ADDRESSES*>(list.get()), &size);
        if (failure == ERROR_SUCCESS) {
            return list;
        }
        if (failure != ERROR_BUFFER_OVERFLOW) {
            return nullptr;
        }
    }
    return nullptr;
}

}  // namespace

std::vector<Ip4Address> InterfaceAddresses() {
    const auto list = AdapterList();
    std::vector<Ip4Address> addresses;
    for (const auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(list.get());
         adapter != nullptr; adapter = adapter->Next) {
        const auto* const unicast = adapter->FirstUnicastAddress;
        if (adapter->OperStatus != IfOperStatusUp || unicast == nullptr ||
            unicast->Address.lpSockaddr->sa_family != AF_INET) {
            continue;
        }
        sockaddr_in address{};
        std::memcpy(&address, unicast->Address.lpSockaddr, sizeof address);
        std::memcpy(addresses.emplace_back().data(), &address.sin_addr, sizeof(Ip4Address));
    }
    return addresses;
}

}  // namespace krv::suite
