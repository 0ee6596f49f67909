#include "suite/transport/TransportErrors.h"

namespace krv::suite {

namespace {

// A reason may be whole sentences, or a question.
std::string Ended(const std::string& reason) {
    return reason.ends_with('.') || reason.ends_with('?') ? reason : reason + '.';
}

}  // namespace

Error ServerError(const std::string& description) {
    return Error(ErrorNumber::Unspecified, description, "InstrumentServer");
}

std::string SecondsText(std::chrono::milliseconds duration) {
    const auto count = duration.count();
    std::string text = std::to_string(count / 1000);
    if (const auto rest = count % 1000; rest != 0) {
        text += '.' + std::to_string(1000 + rest).substr(1);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text + " s";
}

Error AddressError(const std::string& address, const std::string& reason) {
    return ServerError("The address \"" + address + "\" cannot be used: " + Ended(reason));
}

Error ConnectError(const std::string& address, const std::string& reason) {
    return ServerError("No connection to the instrument at " + address + ": " + Ended(reason));
}

Error NoAnswerError(const std::string& address, std::chrono::milliseconds waited) {
    return ServerError("The instrument at " + address + " did not answer within " +
                       SecondsText(waited) + ".");
}

Error NotTakenError(const std::string& address, std::chrono::milliseconds waited) {
    return ServerError("The instrument at " + address + " took no data for " + SecondsText(waited) +
                       ".");
}

Error TooSlowError(const std::string& address) {
    return ServerError("The instrument at " + address + " sent its data too slowly.");
}

Error ClosedError(const std::string& address) {
    return ServerError("The instrument at " + address + " closed the connection.");
}

Error NotServedError(const Error& failure) {
    return ServerError(failure.Description() +
                       " Another program may hold the instrument's only connection: close that "
                       "program, then try again.");
}

Error ConnectionError(const std::string& address, const std::string& reason) {
    return ServerError("The connection to the instrument at " + address +
                       " failed: " + Ended(reason));
}

}  // namespace krv::suite
