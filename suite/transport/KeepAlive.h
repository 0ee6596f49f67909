// A connection on which nothing is said is asked now and then whether the other side is still
// there. One whose cable was pulled ends within a minute and a half, and routers on the way don't
// forget one that waits for a user.
#pragma once

#include "suite/transport/Asio.h"

namespace krv::suite {

// In seconds: after which silence the first question is sent, and how long its answer may take.
// The connection ends when KeepAliveQuestions in a row have no answer.
inline constexpr int KeepAliveSilence = 60;
inline constexpr int KeepAliveAnswer = 10;
inline constexpr int KeepAliveQuestions = 3;

// A system that refuses does without.
void KeepAlive(asio::ip::tcp::socket& socket) noexcept;

}  // namespace krv::suite
