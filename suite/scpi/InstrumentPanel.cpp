#include "suite/scpi/InstrumentPanel.h"

#include "common/ErrorTrap.h"
#include "common/Numbers.h"
#include "suite/scpi/ScpiInstrument.h"
#include "suite/scpi/ScpiReply.h"
#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

Error Unreadable(const std::string& query, const std::string& reply) {
    return ServerError("The instrument's reply to " + query + " can't be understood: " + reply);
}

}  // namespace

double InstrumentPanel::AskNumber(const std::string& query) {
    const std::string reply = m_instrument->Ask(query);
    const ParsedNumber number = ParseNumber(reply);
    if (number.error != NumberTextError::None) {
        throw Unreadable(query, reply);
    }
    return number.value;
}

bool InstrumentPanel::AskSwitch(const std::string& query) {
    const std::string reply = m_instrument->Ask(query);
    if (reply != "0" && reply != "1") {
        throw Unreadable(query, reply);
    }
    return reply == "1";
}

double InstrumentPanel::Frequency() {
    return AskNumber("SOURce:FREQuency?");
}

void InstrumentPanel::SetFrequency(double hertz) {
    m_instrument->Command("SOURce:FREQuency " + NumberToText(hertz));
}

double InstrumentPanel::Level() {
    return AskNumber("SOURce:POWer?");
}

void InstrumentPanel::SetLevel(double dBm) {
    m_instrument->Command("SOURce:POWer " + NumberToText(dBm));
}

double InstrumentPanel::SampleClock() {
    return AskNumber("ARBitrary:CLOCk?");
}

void InstrumentPanel::SetSampleClock(double hertz) {
    m_instrument->Command("ARBitrary:CLOCk " + NumberToText(hertz));
}

bool InstrumentPanel::IsOutputOn() {
    return AskSwitch("OUTPut?");
}

void InstrumentPanel::SwitchOutput(bool on) {
    m_instrument->Command(on ? "OUTPut ON" : "OUTPut OFF");
}

std::string InstrumentPanel::AskIfKnown(const std::string& query) {
    std::string reply;
    const auto failure = FailureOf([&] { reply = m_instrument->Ask(query); });
    if (failure && !m_instrument->IsAlive()) {
        throw Error(*failure);
    }
    return reply;
}

PlayState InstrumentPanel::Playing() {
    PlayState state;
    state.isOn = AskIfKnown("ARBitrary:STATe?") == "1";
    if (state.isOn) {
        state.isWaiting = AskIfKnown("TRIGger:WAITing?") == "1";
        const bool isSequence = AskIfKnown("ARBitrary:MODE?") == "SEQ";
        state.sequence =
            isSequence ? ParseQuoted(AskIfKnown("ARBitrary:SEQuence?")).value_or("") : "";
    }
    return state;
}

bool InstrumentPanel::PlaysInSequence(const std::string& name) {
    return IsInSequence(Playing().sequence, name);
}

void InstrumentPanel::Play(const std::string& name) {
    m_instrument->Command("ARBitrary:SELect " + Quoted(name));
    m_instrument->Command("ARBitrary:STATe ON");
}

void InstrumentPanel::Stop() {
    m_instrument->Command("ARBitrary:STATe OFF");
}

void InstrumentPanel::Deselect() {
    m_instrument->Command("ARBitrary:SELect \"\"");
}

MemoryContent InstrumentPanel::Memory() {
    const std::string query = "ARBitrary:CATalog?";
    const std::string reply = m_instrument->Ask(query);
    auto content = ParseCatalog(reply);
    if (!content) {
        throw Unreadable(query, reply);
    }
    return std::move(*content);
}

void InstrumentPanel::Delete(const std::string& name) {
    m_instrument->Command("ARBitrary:DELete " + Quoted(name));
}

void InstrumentPanel::Copy(const std::string& name, const std::string& copyName) {
    m_instrument->Command("ARBitrary:COPY " + Quoted(name) + ',' + Quoted(copyName));
}

void InstrumentPanel::Rename(const std::string& name, const std::string& newName) {
    m_instrument->Command("ARBitrary:REName " + Quoted(name) + ',' + Quoted(newName));
}

}  // namespace krv::suite
