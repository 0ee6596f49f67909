#include "suite/transport/KeepAlive.h"

#include <winsock2.h>
// After winsock2.h, which it needs.
#include <mstcpip.h>

namespace krv::suite {

void KeepAlive(asio::ip::tcp::socket& socket) noexcept {
    // This system always asks ten times, so that each question gets less time.
    tcp_keepalive times{1, KeepAliveSilence * 1000,
                        KeepAliveAnswer * 1000 * KeepAliveQuestions / 10};
    DWORD returned = 0;
    ::WSAIoctl(socket.native_handle(), SIO_KEEPALIVE_VALS, &times, sizeof times, nullptr, 0,
               &returned, nullptr, nullptr);
}

}  // namespace krv::suite
