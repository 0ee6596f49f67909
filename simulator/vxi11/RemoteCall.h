// Remote procedure calls (RFC 5531): a call's message taken apart, handed to the program that it
// names, and the reply.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "simulator/vxi11/Xdr.h"

namespace krv::simulator {

enum class CallStatus : std::uint8_t {
    Success = 0,
    NoProgram = 1,
    OtherVersion = 2,
    NoProcedure = 3,
    BadArguments = 4
};

struct RemoteProgram {
    std::uint32_t number;
    std::uint32_t version;
    // Runs a procedure: takes its arguments, writes its results. Nothing while it has to wait: it
    // has then changed nothing and will be asked again. May throw XdrFailure.
    std::function<std::optional<CallStatus>(std::uint32_t procedure, XdrReader& arguments,
                                            XdrWriter& results)>
        run;
};

struct CallReply {
    // The procedure has to wait.
    bool isWaiting = false;
    // Empty when the message wasn't a call.
    std::string message;
};

// Carries out the call that the message is. Procedure 0 of every program does nothing.
[[nodiscard]] CallReply AnswerCall(std::span<const std::byte> message,
                                   std::span<const RemoteProgram> programs);

}  // namespace krv::simulator
