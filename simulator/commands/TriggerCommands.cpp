// SCPI-1999 TRIGger subsystem: when playing begins.
#include <array>

#include "simulator/commands/CommandTable.h"
#include "simulator/commands/CommandWords.h"

namespace krv::simulator {
namespace {

constexpr std::array<CommandWord<TriggerSource>, 3> TriggerSources{
    {{"IMMediate", TriggerSource::Immediate},
     {"BUS", TriggerSource::Bus},
     {"EXTernal", TriggerSource::External}}};

void SetTriggerSource(CommandContext& context) {
    context.Device().SetTriggerSource(ChoiceOf<TriggerSource>(TriggerSources, context.Text(0)));
}

void AskTriggerSource(CommandContext& context) {
    context.Reply(WordOf<TriggerSource>(TriggerSources, context.Device().Output().triggerSource));
}

}  // namespace

CommandClause TriggerCommands() {
    return {
        "SCPI-1999 TRIGger subsystem",
        {
            {"TRIGger[:SEQuence][:IMMediate]", {}, [](CommandContext& c) { c.Device().Trigger(); }},
            {"TRIGger[:SEQuence]:SOURce", {{ParameterKind::Word}}, SetTriggerSource},
            {"TRIGger[:SEQuence]:SOURce?", {}, AskTriggerSource},
            {"TRIGger[:SEQuence]:WAITing?",
             {},
             [](CommandContext& c) { c.Reply(c.Device().IsWaiting() ? "1" : "0"); }},
        }};
}

}  // namespace krv::simulator
