// IEEE 488.2 common commands.
#include "common/Joined.h"
#include "simulator/commands/CommandTable.h"

namespace krv::simulator {
namespace {

void Identify(CommandContext& context) {
    const GeneratorSettings& settings = context.Device().Settings();
    context.Reply(std::string(MakerName) + ',' + settings.model + ',' +
                  settings.serialNumber.value() + ',' + settings.firmware);
}

void ListOptions(CommandContext& context) {
    const std::string options = Joined(context.Device().Settings().options, ",");
    context.Reply(options.empty() ? "0" : options);
}

void ClearStatus(CommandContext& context) {
    context.Device().Errors().Clear();
    context.Device().Status().ClearEvents();
}

std::uint8_t RegisterArgument(CommandContext& context) {
    const std::int32_t value = context.Integer(0);
    if (value < 0 || value > 255) {
        throw CommandFailure(ScpiError::DataOutOfRange, "0 to 255");
    }
    return static_cast<std::uint8_t>(value);
}

void SetEventEnable(CommandContext& context) {
    context.Device().Status().eventEnable = RegisterArgument(context);
}

void SetServiceRequestEnable(CommandContext& context) {
    context.Device().Status().serviceRequestEnable =
        static_cast<std::uint8_t>(RegisterArgument(context) & StatusRegisters::ServiceReasons);
}

void AskEventEnable(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Status().eventEnable));
}

void AskServiceRequestEnable(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Status().serviceRequestEnable));
}

void AskEvents(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Status().TakeEvents()));
}

void AskStatusByte(CommandContext& context) {
    Generator& generator = context.Device();
    context.Reply(std::to_string(
        generator.Status().StatusByte(generator.Errors().Count() != 0, context.ReplyWaiting())));
}

}  // namespace

CommandClause CommonCommands() {
    // Each command is complete before the next is read, so that *OPC, *OPC? and *WAI wait for
    // nothing.
    return {
        "IEEE 488.2 common commands",
        {
            {"*CLS", {}, ClearStatus},
            {"*ESE", {{ParameterKind::Integer}}, SetEventEnable},
            {"*ESE?", {}, AskEventEnable},
            {"*ESR?", {}, AskEvents},
            {"*IDN?", {}, Identify},
            {"*OPC", {}, [](CommandContext& c) { c.Device().Status().NoteOperationComplete(); }},
            {"*OPC?", {}, [](CommandContext& c) { c.Reply("1"); }},
            {"*OPT?", {}, ListOptions},
            {"*RST", {}, [](CommandContext& c) { c.Device().Reset(); }},
            {"*SRE", {{ParameterKind::Integer}}, SetServiceRequestEnable},
            {"*SRE?", {}, AskServiceRequestEnable},
            {"*STB?", {}, AskStatusByte},
            {"*TRG", {}, [](CommandContext& c) { c.Device().TriggerFromBus(); }},
            {"*TST?", {}, [](CommandContext& c) { c.Reply("0"); }},
            {"*WAI", {}, [](CommandContext&) {}},
        }};
}

}  // namespace krv::simulator
