#include "simulator/vxi11/RemoteCall.h"

namespace krv::simulator {
namespace {

constexpr std::uint32_t CallMessage = 0;
constexpr std::uint32_t ReplyMessage = 1;
constexpr std::uint32_t Accepted = 0;
constexpr std::uint32_t Denied = 1;
constexpr std::uint32_t RpcVersion = 2;
constexpr std::size_t MostCredentialBytes = 400;

struct CallHeader {
    std::uint32_t id = 0;
    std::uint32_t rpcVersion = 0;
    std::uint32_t program = 0;
    std::uint32_t version = 0;
    std::uint32_t procedure = 0;
};

// Throws XdrFailure for what isn't a call.
CallHeader ReadHeader(XdrReader& message) {
    CallHeader header;
    header.id = message.Number();
    if (message.Number() != CallMessage) {
        throw XdrFailure();
    }
    header.rpcVersion = message.Number();
    header.program = message.Number();
    header.version = message.Number();
    header.procedure = message.Number();
    // Who calls, and what proves it: nobody is asked.
    for (int each = 0; each < 2; ++each) {
        static_cast<void>(message.Number());
        static_cast<void>(message.Opaque(MostCredentialBytes));
    }
    return header;
}

std::string DeniedReply(std::uint32_t id) {
    constexpr std::uint32_t VersionMismatch = 0;
    XdrWriter reply;
    reply.Number(id).Number(ReplyMessage).Number(Denied).Number(VersionMismatch);
    reply.Number(RpcVersion).Number(RpcVersion);
    return reply.Bytes();
}

std::string AcceptedReply(std::uint32_t id, CallStatus status, const std::string& results) {
    XdrWriter reply;
    reply.Number(id).Number(ReplyMessage).Number(Accepted).Number(0).Opaque({});
    reply.Number(static_cast<std::uint32_t>(status));
    return reply.Bytes() + results;
}

CallReply Run(const RemoteProgram& program, const CallHeader& header, XdrReader& arguments) {
    XdrWriter results;
    if (header.version != program.version) {
        results.Number(program.version).Number(program.version);
        return {false, AcceptedReply(header.id, CallStatus::OtherVersion, results.Bytes())};
    }
    if (header.procedure == 0) {
        return {false, AcceptedReply(header.id, CallStatus::Success, {})};
    }
    try {
        const auto status = program.run(header.procedure, arguments, results);
        if (!status) {
            return {true, {}};
        }
        return {false, AcceptedReply(header.id, *status, results.Bytes())};
    } catch (const XdrFailure&) {
        return {false, AcceptedReply(header.id, CallStatus::BadArguments, {})};
    }
}

}  // namespace

CallReply AnswerCall(std::span<const std::byte> message, std::span<const RemoteProgram> programs) {
    XdrReader reader(message);
    CallHeader header;
    try {
        header = ReadHeader(reader);
    } catch (const XdrFailure&) {
        return {};
    }
    if (header.rpcVersion != RpcVersion) {
        return {false, DeniedReply(header.id)};
    }
    for (const RemoteProgram& program : programs) {
        if (program.number == header.program) {
            return Run(program, header, reader);
        }
    }
    return {false, AcceptedReply(header.id, CallStatus::NoProgram, {})};
}

}  // namespace krv::simulator
