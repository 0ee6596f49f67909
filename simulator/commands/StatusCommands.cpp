// SCPI-1999 STATus subsystem. None of the standard's conditions occurs in this generator, so that
// its registers hold nothing but what enables their events.
#include "simulator/commands/CommandTable.h"

namespace krv::simulator {
namespace {

using EnableRegister = std::uint16_t StatusRegisters::*;

template <EnableRegister Register>
void SetEnable(CommandContext& context) {
    const std::int32_t value = context.Integer(0);
    if (value < 0 || value > std::int32_t{StatusRegisters::HighestEnable}) {
        throw CommandFailure(ScpiError::DataOutOfRange, "0 to 32767");
    }
    context.Device().Status().*Register = static_cast<std::uint16_t>(value);
}

template <EnableRegister Register>
void AskEnable(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Status().*Register));
}

void AskNothing(CommandContext& context) {
    context.Reply("0");
}

void Preset(CommandContext& context) {
    context.Device().Status().operationEnable = 0;
    context.Device().Status().questionableEnable = 0;
}

}  // namespace

CommandClause StatusCommands() {
    constexpr EnableRegister Operation = &StatusRegisters::operationEnable;
    constexpr EnableRegister Questionable = &StatusRegisters::questionableEnable;
    return {"SCPI-1999 STATus subsystem",
            {
                {"STATus:OPERation[:EVENt]?", {}, AskNothing},
                {"STATus:OPERation:CONDition?", {}, AskNothing},
                {"STATus:OPERation:ENABle", {{ParameterKind::Integer}}, SetEnable<Operation>},
                {"STATus:OPERation:ENABle?", {}, AskEnable<Operation>},
                {"STATus:PRESet", {}, Preset},
                {"STATus:QUEStionable[:EVENt]?", {}, AskNothing},
                {"STATus:QUEStionable:CONDition?", {}, AskNothing},
                {"STATus:QUEStionable:ENABle", {{ParameterKind::Integer}}, SetEnable<Questionable>},
                {"STATus:QUEStionable:ENABle?", {}, AskEnable<Questionable>},
            }};
}

}  // namespace krv::simulator
