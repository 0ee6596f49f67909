// How much of what was sent over a connection the other side's system has yet to acknowledge.
#pragma once

#include <cstdint>

#include "suite/transport/Asio.h"

namespace krv::suite {

// A number that falls whenever bytes are acknowledged, as long as no more are sent; only the change
// means something. It stays the same where the system doesn't report acknowledgements.
[[nodiscard]] std::int64_t OutstandingBytes(asio::ip::tcp::socket& socket) noexcept;

}  // namespace krv::suite
