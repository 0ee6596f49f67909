// The generator's own DIAGnostic subsystem: faults at run time.
#include <stdexcept>

#include "simulator/commands/CommandTable.h"
#include "suite/scpi/ScpiReply.h"

namespace krv::simulator {
namespace {

void SwitchFault(CommandContext& context) {
    try {
        context.Device().ActiveFaults().Switch(context.Text(0));
    } catch (const std::invalid_argument& refusal) {
        throw CommandFailure(ScpiError::IllegalParameterValue, refusal.what());
    }
}

void AskFaults(CommandContext& context) {
    std::string reply;
    for (const std::string& fault : context.Device().ActiveFaults().Active()) {
        reply += (reply.empty() ? "" : ",") + suite::Quoted(fault);
    }
    context.Reply(reply.empty() ? suite::Quoted({}) : reply);
}

}  // namespace

CommandClause DiagnosticCommands() {
    return {"DIAGnostic subsystem",
            {
                {"DIAGnostic:FAULt", {{ParameterKind::String}}, SwitchFault},
                {"DIAGnostic:FAULt?", {}, AskFaults},
                {"DIAGnostic:FAULt:CLEar",
                 {},
                 [](CommandContext& c) { c.Device().ActiveFaults().Clear(); }},
                // Pressing a key doesn't start remote operation.
                {"DIAGnostic:KEY",
                 {{ParameterKind::String}},
                 [](CommandContext& c) { c.Device().PressKey(c.Text(0)); },
                 1,
                 true},
            }};
}

}  // namespace krv::simulator
