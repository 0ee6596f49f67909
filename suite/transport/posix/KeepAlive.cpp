#include "suite/transport/KeepAlive.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace krv::suite {
namespace {

void Set(asio::ip::tcp::socket& socket, int level, int option, int value) noexcept {
    ::setsockopt(socket.native_handle(), level, option, &value, sizeof value);
}

}  // namespace

void KeepAlive(asio::ip::tcp::socket& socket) noexcept {
    Set(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
#ifdef TCP_KEEPIDLE
    Set(socket, IPPROTO_TCP, TCP_KEEPIDLE, KeepAliveSilence);
#endif
#ifdef TCP_KEEPINTVL
    Set(socket, IPPROTO_TCP, TCP_KEEPINTVL, KeepAliveAnswer);
    Set(socket, IPPROTO_TCP, TCP_KEEPCNT, KeepAliveQuestions);
#endif
}

}  // namespace krv::suite
