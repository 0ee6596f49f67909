// SCPI-1999 OUTPut and SOURce subsystems: what the generator puts out.
#include "simulator/commands/CommandNumbers.h"
#include "simulator/commands/CommandTable.h"

namespace krv::simulator {
namespace {

void SetFrequency(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    context.Device().Output().frequencyHz =
        WithinLimits(context.Number(0), limits.lowestFrequencyHz, limits.highestFrequencyHz);
}

void SetLevel(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    context.Device().Output().levelDbm =
        WithinLimits(context.Number(0), limits.lowestLevelDbm, limits.highestLevelDbm);
}

void AskFrequency(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    ReplyNumberOrLimit(context, context.Device().Output().frequencyHz, limits.lowestFrequencyHz,
                       limits.highestFrequencyHz);
}

void AskLevel(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    ReplyNumberOrLimit(context, context.Device().Output().levelDbm, limits.lowestLevelDbm,
                       limits.highestLevelDbm);
}

}  // namespace

CommandClause OutputCommands() {
    const ParameterForm limit{ParameterKind::Word, true};
    return {"SCPI-1999 OUTPut and SOURce subsystems",
            {
                {"OUTPut[:STATe]",
                 {{ParameterKind::Boolean}},
                 [](CommandContext& c) { c.Device().Output().isOn = c.Boolean(0); }},
                {"OUTPut[:STATe]?",
                 {},
                 [](CommandContext& c) { c.Reply(c.Device().Output().isOn ? "1" : "0"); }},
                {"[SOURce:]FREQuency[:CW]", {{ParameterKind::Frequency}}, SetFrequency},
                {"[SOURce:]FREQuency[:CW]?", {limit}, AskFrequency},
                {"[SOURce:]POWer[:LEVel]", {{ParameterKind::Level}}, SetLevel},
                {"[SOURce:]POWer[:LEVel]?", {limit}, AskLevel},
            }};
}

}  // namespace krv::simulator
