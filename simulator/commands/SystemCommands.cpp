// SCPI-1999 SYSTem subsystem.
#include "simulator/commands/CommandTable.h"
#include "simulator/device/GeneratorState.h"
#include "suite/scpi/ScpiReply.h"

namespace krv::simulator {
namespace {

std::string EntryText(const QueuedError& error) {
    return std::to_string(error.number) + ',' + suite::Quoted(error.text);
}

void TakeNextError(CommandContext& context) {
    context.Reply(EntryText(context.Device().Errors().Take()));
}

void TakeAllErrors(CommandContext& context) {
    ErrorQueue& errors = context.Device().Errors();
    std::string reply = EntryText(errors.Take());
    while (errors.Count() != 0) {
        reply += ',' + EntryText(errors.Take());
    }
    context.Reply(reply);
}

void CountErrors(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Errors().Count()));
}

void AskRemote(CommandContext& context) {
    context.Reply(context.Device().IsRemote() ? "1" : "0");
}

void AskState(CommandContext& context) {
    context.Reply(BlockReply(CapturedState(context.Device())));
}

void SetState(CommandContext& context) {
    RestoreState(context.Device(), std::as_bytes(std::span(context.Text(0))));
}

Command KeepingLocal(Command command) {
    command.keepsLocal = true;
    return command;
}

}  // namespace

CommandClause SystemCommands() {
    return {"SCPI-1999 SYSTem subsystem",
            {
                {"SYSTem:ERRor[:NEXT]?", {}, TakeNextError},
                {"SYSTem:ERRor:ALL?", {}, TakeAllErrors},
                {"SYSTem:ERRor:COUNt?", {}, CountErrors},
                KeepingLocal(
                    {"SYSTem:LOCal", {}, [](CommandContext& c) { c.Device().SetRemote(false); }}),
                {"SYSTem:REMote", {}, [](CommandContext&) {}},
                KeepingLocal({"SYSTem:REMote?", {}, AskRemote}),
                {"SYSTem:SET", {{ParameterKind::Block}}, SetState},
                {"SYSTem:SET?", {}, AskState},
                {"SYSTem:VERSion?", {}, [](CommandContext& c) { c.Reply("1999.0"); }},
            }};
}

}  // namespace krv::simulator
