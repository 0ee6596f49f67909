// The generator's own ARBitrary subsystem: waveform memory and playing.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
#include "simulator/commands/CommandNumbers.h"
#include "simulator/commands/CommandTable.h"
#include "simulator/commands/CommandWords.h"
#include "suite/scpi/ByteOrder.h"
#include "suite/scpi/ScpiReply.h"

namespace krv::simulator {
namespace {

// In one reply.
constexpr double MostCodesSent = 16777216;

void ReceiveIQ(CommandContext& context) {
    Waveform waveform;
    waveform.name = context.Text(0);
    waveform.codes = context.TakeCodes(1);
    if (context.Has(2)) {
        waveform.qCodes = context.TakeCodes(2);
    }
    context.Device().KeepWaveform(std::move(waveform));
}

void ReceiveInterleaved(CommandContext& context) {
    Waveform waveform;
    waveform.name = context.Text(0);
    waveform.format = WaveformFormat::Interleaved;
    waveform.codes = context.TakeCodes(1);
    context.Device().KeepWaveform(std::move(waveform));
}

void ReceiveMarkers(CommandContext& context) {
    context.Device().KeepMarkers(context.Text(0), context.TakeCodes(1));
}

// The part of an array that the client asks for, which may be none.
std::span<const std::int16_t> AskedCodes(CommandContext& context) {
    const Waveform& waveform = context.Device().WaveformNamed(context.Text(0));
    const std::array arrays{&waveform.codes, &waveform.qCodes, &waveform.markers};
    const auto number = WithinLimits(context.Integer(1), 1, arrays.size());
    const auto codes = arrays.at(static_cast<std::size_t>(number) - 1)->Span();
    const auto size = static_cast<double>(codes.size());
    const double first = WithinLimits(context.Integer(2), 0, size);
    const double count = WithinLimits(context.Integer(3), 0, std::min(size - first, MostCodesSent));
    return codes.subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(count));
}

void SendCodes(CommandContext& context) {
    const std::span<const std::int16_t> codes = AskedCodes(context);
    std::vector<std::uint16_t> wire(codes.size());
    suite::CopyToWireOrder(codes, wire.data());
    context.Reply(BlockReply({reinterpret_cast<const char*>(wire.data()), 2 * wire.size()}));
}

void ListWaveforms(CommandContext& context) {
    const WaveformMemory& memory = context.Device().Memory();
    std::string reply =
        std::to_string(memory.UsedPoints()) + ',' + std::to_string(memory.FreePoints());
    for (const auto& [key, waveform] : memory.Waveforms()) {
        const bool interleaved = waveform.format == WaveformFormat::Interleaved;
        reply += ',' + suite::Quoted(waveform.name + (interleaved ? ",INT," : ",IQ,") +
                                     std::to_string(waveform.Points()));
    }
    context.Reply(reply);
}

void AskSize(CommandContext& context) {
    const Waveform& waveform = context.Device().WaveformNamed(context.Text(0));
    context.Reply(std::to_string(waveform.codes.Size()) + ',' +
                  std::to_string(waveform.qCodes.Size()) + ',' +
                  std::to_string(waveform.markers.Size()));
}

std::string ChecksumText(const CodeArray& codes) {
    return "#H" + Hexadecimal(CodesCrc32(codes.Span()));
}

void AskChecksum(CommandContext& context) {
    const Waveform& waveform = context.Device().WaveformNamed(context.Text(0));
    context.Reply(ChecksumText(waveform.codes) + ',' + ChecksumText(waveform.qCodes) + ',' +
                  ChecksumText(waveform.markers));
}

void AskSelected(CommandContext& context) {
    context.Reply(suite::Quoted(context.Device().SelectedName()));
}

void AskPlaying(CommandContext& context) {
    context.Reply(context.Device().IsPlaying() ? "1" : "0");
}

void SetSampleClock(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    context.Device().Output().sampleClockHz =
        WithinLimits(context.Number(0), limits.lowestSampleClockHz, limits.highestSampleClockHz);
}

void AskSampleClock(CommandContext& context) {
    const OutputLimits& limits = context.Device().Limits();
    ReplyNumberOrLimit(context, context.Device().Output().sampleClockHz, limits.lowestSampleClockHz,
                       limits.highestSampleClockHz);
}

constexpr std::array<CommandWord<IqRoute>, 3> IqRoutes{
    {{"MODulator", IqRoute::Modulator}, {"OUTPut", IqRoute::Output}, {"BOTH", IqRoute::Both}}};
constexpr std::array<CommandWord<MarkerRoute>, 4> MarkerRoutes{
    {{"NONE", MarkerRoute::None},
     {"EVENT1", MarkerRoute::Event1},
     {"EVENT2", MarkerRoute::Event2},
     {"BLANking", MarkerRoute::Blanking}}};
constexpr std::array<CommandWord<bool>, 2> PlayModes{{{"WAVeform", false}, {"SEQuence", true}}};

void SetIqRoute(CommandContext& context) {
    context.Device().Output().iqRoute = ChoiceOf<IqRoute>(IqRoutes, context.Text(0));
}

void AskIqRoute(CommandContext& context) {
    context.Reply(WordOf<IqRoute>(IqRoutes, context.Device().Output().iqRoute));
}

// Markers are counted from 1.
MarkerRoute& MarkerRouteOf(CommandContext& context) {
    const double number = WithinLimits(context.Integer(0), 1, MarkerCount);
    return context.Device().Output().markerRoutes.at(static_cast<std::size_t>(number) - 1);
}

void SetMarkerRoute(CommandContext& context) {
    MarkerRouteOf(context) = ChoiceOf<MarkerRoute>(MarkerRoutes, context.Text(1));
}

void AskMarkerRoute(CommandContext& context) {
    context.Reply(WordOf<MarkerRoute>(MarkerRoutes, MarkerRouteOf(context)));
}

void SetPlayMode(CommandContext& context) {
    context.Device().PlaySequence(ChoiceOf<bool>(PlayModes, context.Text(0)));
}

void AskPlayMode(CommandContext& context) {
    context.Reply(WordOf<bool>(PlayModes, context.Device().PlaysSequence()));
}

void SetSequence(CommandContext& context) {
    context.Device().SetSequence(ParseSequence(context.Text(0)));
}

void AskSequence(CommandContext& context) {
    context.Reply(suite::Quoted(SequenceText(context.Device().PlayedSequence())));
}

void AskFreePoints(CommandContext& context) {
    context.Reply(std::to_string(context.Device().Memory().FreePoints()));
}

}  // namespace

CommandClause ArbitraryCommands() {
    const ParameterForm name{ParameterKind::Name};
    const ParameterForm codes{ParameterKind::Codes};
    const ParameterForm integer{ParameterKind::Integer};
    const ParameterForm word{ParameterKind::Word};
    return {
        "ARBitrary subsystem",
        {
            {"ARBitrary:CATalog?", {}, ListWaveforms},
            {"ARBitrary:CHECksum?", {name}, AskChecksum},
            {"ARBitrary:CLOCk", {{ParameterKind::Frequency}}, SetSampleClock},
            {"ARBitrary:CLOCk?", {{ParameterKind::Word, true}}, AskSampleClock},
            {"ARBitrary:COPY",
             {name, name},
             [](CommandContext& c) { c.Device().Copy(c.Text(0), c.Text(1)); }},
            {"ARBitrary:DATA?", {name, integer, integer, integer}, SendCodes},
            {"ARBitrary:DATA:INTerleaved", {name, codes}, ReceiveInterleaved, 2},
            {"ARBitrary:DATA:IQ", {name, codes, {ParameterKind::Codes, true}}, ReceiveIQ},
            {"ARBitrary:DATA:MARKers", {name, codes}, ReceiveMarkers, 0},
            {"ARBitrary:DELete", {name}, [](CommandContext& c) { c.Device().Delete(c.Text(0)); }},
            {"ARBitrary:DELete:ALL", {}, [](CommandContext& c) { c.Device().DeleteAll(); }},
            {"ARBitrary:MEMory:FREE?", {}, AskFreePoints},
            {"ARBitrary:MODE", {word}, SetPlayMode},
            {"ARBitrary:MODE?", {}, AskPlayMode},
            {"ARBitrary:REName",
             {name, name},
             [](CommandContext& c) { c.Device().Rename(c.Text(0), c.Text(1)); }},
            {"ARBitrary:ROUTe:IQ", {word}, SetIqRoute},
            {"ARBitrary:ROUTe:IQ?", {}, AskIqRoute},
            {"ARBitrary:ROUTe:MARKer", {integer, word}, SetMarkerRoute},
            {"ARBitrary:ROUTe:MARKer?", {integer}, AskMarkerRoute},
            {"ARBitrary:SELect", {name}, [](CommandContext& c) { c.Device().Select(c.Text(0)); }},
            {"ARBitrary:SELect?", {}, AskSelected},
            {"ARBitrary:SEQuence", {{ParameterKind::String}}, SetSequence},
            {"ARBitrary:SEQuence?", {}, AskSequence},
            {"ARBitrary:SEQuence:POINts?",
             {},
             [](CommandContext& c) { c.Reply(std::to_string(c.Device().SequencePoints())); }},
            {"ARBitrary:SIZE?", {name}, AskSize},
            {"ARBitrary:STATe",
             {{ParameterKind::Boolean}},
             [](CommandContext& c) { c.Device().SetPlaying(c.Boolean(0)); }},
            {"ARBitrary:STATe?", {}, AskPlaying},
        }};
}

}  // namespace krv::simulator
