// How far the other side of a connection is behind with what was handed over to the system.
#pragma once

#include <cstdint>

#include "suite/transport/Asio.h"

namespace krv::suite {

// A number that falls whenever the other side acknowledges bytes, as long as none are handed over.
// It stays the same where the system doesn't tell.
[[nodiscard]] std::int64_t OutstandingBytes(asio::ip::tcp::socket& socket) noexcept;

}  // namespace krv::suite
