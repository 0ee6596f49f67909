// The errors of the server and of connections, worded for the person in front of the instrument.
#pragma once

#include <chrono>
#include <string>

#include "common/Error.h"

namespace krv::suite {

// Any error of the instrument server.
[[nodiscard]] Error ServerError(const std::string& description);

// The address can't be understood; the reason continues the sentence.
[[nodiscard]] Error AddressError(const std::string& address, const std::string& reason);
// No connection could be opened; the reason continues the sentence.
[[nodiscard]] Error ConnectError(const std::string& address, const std::string& reason);
// A reply is missing.
[[nodiscard]] Error NoAnswerError(const std::string& address, std::chrono::milliseconds waited);
// The instrument takes no more data.
[[nodiscard]] Error NotTakenError(const std::string& address, std::chrono::milliseconds waited);
// Its data comes, but more slowly than over any line.
[[nodiscard]] Error TooSlowError(const std::string& address);
// The other side has ended the connection.
[[nodiscard]] Error ClosedError(const std::string& address);
// The same for a connection over which nothing was answered yet, as when the instrument has only
// one and another program holds it.
[[nodiscard]] Error NotServedError(const Error& failure);
// Any other failure of a connection; the reason continues the sentence.
[[nodiscard]] Error ConnectionError(const std::string& address, const std::string& reason);

// E.g. "10 s" or "0.25 s".
[[nodiscard]] std::string SecondsText(std::chrono::milliseconds duration);

}  // namespace krv::suite
