// SCPI-1999 HCOPy and MMEMory subsystems: the captured screen and the files that it is one of.
#include "simulator/commands/CommandTable.h"
#include "suite/scpi/ScpiReply.h"

namespace krv::simulator {
namespace {

const std::string& FileNamed(CommandContext& context) {
    const std::string* const file = context.Device().Files().Find(context.Text(0));
    if (file == nullptr) {
        throw CommandFailure(ScpiError::FileNameNotFound, context.Text(0));
    }
    return *file;
}

void ListFiles(CommandContext& context) {
    std::string reply;
    for (const auto& [name, bytes] : context.Device().Files().Files()) {
        reply +=
            (reply.empty() ? "" : ",") + suite::Quoted(name + ',' + std::to_string(bytes.size()));
    }
    context.Reply(reply.empty() ? suite::Quoted({}) : reply);
}

void SendFile(CommandContext& context) {
    context.Reply(BlockReply(FileNamed(context)));
}

void DeleteFile(CommandContext& context) {
    static_cast<void>(FileNamed(context));
    context.Device().Files().Delete(context.Text(0));
}

void AskFileExists(CommandContext& context) {
    const bool exists = context.Device().Files().Find(context.Text(0)) != nullptr;
    context.Reply(exists ? "1" : "0");
}

}  // namespace

CommandClause FileCommands() {
    const ParameterForm name{ParameterKind::String};
    return {"SCPI-1999 HCOPy and MMEMory subsystems",
            {
                {"HCOPy[:IMMediate]", {}, [](CommandContext& c) { c.Device().CaptureScreen(); }},
                {"MMEMory:CATalog?", {}, ListFiles},
                {"MMEMory:DATA?", {name}, SendFile},
                {"MMEMory:DELete", {name}, DeleteFile},
                {"MMEMory:EXISts?", {name}, AskFileExists},
            }};
}

}  // namespace krv::simulator
