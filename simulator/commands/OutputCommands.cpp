// SCPI-1999 OUTPut and SOURce subsystems: what the generator puts out.
#include <array>
#include <charconv>

#include "simulator/commands/CommandTable.h"

namespace krv::simulator {
namespace {

// E.g. "1.500000000E+09".
std::string NumberReply(double number) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                   std::chars_format::scientific, 9)
                         .ptr;
    std::string reply(text.data(), end);
    reply[reply.find('e')] = 'E';
    return reply;
}

double WithinLimits(double number, double lowest, double highest) {
    if (number < lowest || number > highest) {
        throw CommandFailure(ScpiError::DataOutOfRange,
                             NumberReply(lowest) + " to " + NumberReply(highest));
    }
    return number;
}

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
