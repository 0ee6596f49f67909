#include "suite/transport/Outstanding.h"

#include <sys/ioctl.h>
#ifdef __linux__
#include <linux/sockios.h>
#endif

namespace krv::suite {

std::int64_t OutstandingBytes(asio::ip::tcp::socket& socket) noexcept {
#ifdef SIOCOUTQ
    int bytes = 0;
    return ::ioctl(socket.native_handle(), SIOCOUTQ, &bytes) == 0 ? bytes : 0;
#else
    static_cast<void>(socket);
    return 0;
#endif
}

}  // namespace krv::suite
