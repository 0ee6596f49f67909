// SCPI-1999 OUTPut and SOURce subsystems: what the generator puts out.
#include "simulator/commands/CommandNumbers.h"
#include "simulator/commands/CommandTable.h"

namespace krv::simulator {
namespace {

void SetFrequency(CommandContext& context) {
    context.Device().Output().frequencyHz = WithinLimits(
        context.Number(0), OutputLimit::LowestFrequencyHz, OutputLimit::HighestFrequencyHz);
}

void SetLevel(CommandContext& context) {
    context.Device().Output().levelDbm =
        WithinLimits(context.Number(0), OutputLimit::LowestLevelDbm, OutputLimit::HighestLevelDbm);
}

void AskFrequency(CommandContext& context) {
    context.Reply(NumberReply(context.Device().Output().frequencyHz));
}

void AskLevel(CommandContext& context) {
    context.Reply(NumberReply(context.Device().Output().levelDbm));
}

}  // namespace

CommandClause OutputCommands() {
    return {"SCPI-1999 OUTPut and SOURce subsystems",
            {
                {"OUTPut[:STATe]",
                 {{ParameterKind::Boolean}},
                 [](CommandContext& c) { c.Device().Output().isOn = c.Boolean(0); }},
                {"OUTPut[:STATe]?",
                 {},
                 [](CommandContext& c) { c.Reply(c.Device().Output().isOn ? "1" : "0"); }},
                {"[SOURce:]FREQuency[:CW]", {{ParameterKind::Frequency}}, SetFrequency},
                {"[SOURce:]FREQuency[:CW]?", {}, AskFrequency},
                {"[SOURce:]POWer[:LEVel]", {{ParameterKind::Level}}, SetLevel},
                {"[SOURce:]POWer[:LEVel]?", {}, AskLevel},
            }};
}

}  // namespace krv::simulator
