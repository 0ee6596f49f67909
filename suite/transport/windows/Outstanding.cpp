#include "suite/transport/Outstanding.h"

#include <winsock2.h>
// After winsock2.h, which it needs.
#include <mstcpip.h>

namespace krv::suite {

std::int64_t OutstandingBytes(asio::ip::tcp::socket& socket) noexcept {
#ifdef SIO_TCP_INFO
    DWORD version = 0;
    TCP_INFO_v0 info{};
    DWORD returned = 0;
    if (::WSAIoctl(socket.native_handle(), SIO_TCP_INFO, &version, sizeof version, &info,
                   sizeof info, &returned, nullptr, nullptr) == 0) {
        return static_cast<std::int64_t>(info.BytesInFlight) -
               static_cast<std::int64_t>(info.BytesOut);
    }
#else
    // The headers' version of the system has no such query.
    static_cast<void>(socket);
#endif
    return 0;
}

}  // namespace krv::suite
