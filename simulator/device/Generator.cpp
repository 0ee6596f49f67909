#include "simulator/device/Generator.h"

#include <algorithm>
#include <utility>

#include "simulator/scpi/AsciiCase.h"
#include "suite/picture/BitmapFile.h"

namespace krv::simulator {
namespace {

bool IsNameCharacter(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\'' &&
           character != ',';
}

void RequireName(const std::string& name) {
    if (name.empty() || name.size() > Generator::MaxNameLength) {
        throw CommandFailure(ScpiError::FileNameError, "a name has 1 to 23 characters");
    }
    if (!std::all_of(name.begin(), name.end(), IsNameCharacter)) {
        throw CommandFailure(ScpiError::FileNameError,
                             "a name is printable ASCII without quotation marks and commas");
    }
}

GeneratorSettings WithSerialNumber(GeneratorSettings settings) {
    if (!settings.serialNumber) {
        settings.serialNumber = SerialNumberOf(settings.model);
    }
    return settings;
}

void ShowChannels(const Waveform& waveform, ScreenContent& content) {
    const std::span<const std::int16_t> codes = waveform.codes.Span();
    if (waveform.format == WaveformFormat::Separate) {
        content.i = {codes, 1};
        content.q = {waveform.qCodes.Span(), 1};
    } else if (!codes.empty()) {
        content.i = {codes, 2};
        content.q = {codes.subspan(1), 2};
    }
    content.markers = {waveform.markers.Span(), 1};
}

}  // namespace

Generator::Generator(GeneratorSettings settings)
    : m_settings(WithSerialNumber(std::move(settings))), m_memory(m_settings.memoryPoints) {
    RequireValid(m_settings);
    Reset();
    for (const std::string& fault : m_settings.faults) {
        m_faults.Switch(fault);
    }
    if (m_settings.storeFolder) {
        m_store.emplace(*m_settings.storeFolder);
    }
    if (m_settings.transcriptFile) {
        m_transcript = std::make_shared<suite::ConversationLog>(*m_settings.transcriptFile);
    }
}

void Generator::Report(ScpiError error, std::string_view detail) {
    QueuedError entry{static_cast<int>(error), std::string(ScpiErrorText(error))};
    if (!detail.empty()) {
        entry.text += ';';
        entry.text += detail;
    }
    Report(std::move(entry));
}

void Generator::Report(QueuedError error) {
    m_status.NoteError(error.number);
    if (!m_errors.Add(std::move(error))) {
        m_status.NoteError(static_cast<int>(ScpiError::QueueOverflow));
    }
}

void Generator::Reset() noexcept {
    m_selectedName.clear();
    m_sequence.clear();
    m_playsSequence = m_playing = m_isWaiting = false;
    m_output = {};
    m_output.sampleClockHz = Limits().highestSampleClockHz;
}

bool Generator::CapturesByHand() const noexcept {
    return m_settings.model.find('B') != std::string::npos;
}

void Generator::KeepWaveform(Waveform waveform) {
    RequireName(waveform.name);
    RequireNotPlaying(waveform.name);
    RequireCodes(waveform.codes);
    RequireCodes(waveform.qCodes);
    Corrupt(waveform.codes);
    FinishReceiving(Keep(std::move(waveform)));
}

bool Generator::Keep(Waveform waveform) {
    const std::string name = waveform.name;
    DropStoredNamesake(name);
    m_memory.Put(std::move(waveform));
    return !m_store || m_store->Write(WaveformNamed(name));
}

// The converters of all but two models take 14 bits.
void Generator::RequireCodes(const CodeArray& codes) const {
    constexpr std::int16_t Largest14BitCode = 16383;
    if (m_settings.model == "M7718C" || m_settings.model == "M9920C") {
        return;
    }
    const auto isOutside = [](std::int16_t code) { return code < 0 || code > Largest14BitCode; };
    if (std::ranges::any_of(codes.Span(), isOutside)) {
        throw CommandFailure(ScpiError::DataOutOfRange, "codes are 0 to 16383");
    }
}

// Files whose names differ in their case only may be two to the system.
void Generator::DropStoredNamesake(const std::string& name) {
    const Waveform* const earlier = m_memory.Find(name);
    if (m_store && earlier != nullptr && earlier->name != name) {
        m_store->Drop(earlier->name);
    }
}

void Generator::KeepMarkers(const std::string& name, CodeArray markers) {
    RequireName(name);
    RequireNotPlaying(name);
    Waveform* const waveform = m_memory.Find(name);
    if (waveform == nullptr) {
        throw CommandFailure(ScpiError::FileNameNotFound, name);
    }
    Corrupt(markers);
    waveform->markers = std::move(markers);
    FinishReceiving(!m_store || m_store->WriteMarkers(*waveform));
}

void Generator::Corrupt(CodeArray& codes) {
    if (codes.Size() != 0 && m_faults.TakeCorruption()) {
        codes[codes.Size() / 2] ^= 1;
    }
}

void Generator::FinishReceiving(bool stored) {
    if (auto injected = m_faults.TakeInjectedError()) {
        Report(std::move(*injected));
    }
    RequireStored(stored);
}

void Generator::RequireStored(bool stored) {
    if (!stored) {
        throw CommandFailure(ScpiError::MassStorageError, "the waveform's files");
    }
}

const Waveform& Generator::WaveformNamed(const std::string& name) {
    const Waveform* const waveform = m_memory.Find(name);
    if (waveform == nullptr) {
        throw CommandFailure(ScpiError::FileNameNotFound, name);
    }
    return *waveform;
}

void Generator::Copy(const std::string& name, const std::string& copyName) {
    const Waveform& original = WaveformNamed(name);
    RequireName(copyName);
    RequireNotPlaying(copyName);
    if (EqualAnyCase(name, copyName)) {
        throw CommandFailure(ScpiError::FileNameError, "the copy needs another name");
    }
    WaveformMemory::Reservation room;
    if (!m_memory.Reserve(room, copyName, original.Points())) {
        throw CommandFailure(ScpiError::OutOfMemory);
    }
    RequireStored(Keep(original.CopyNamed(copyName)));
}

void Generator::Rename(const std::string& name, const std::string& newName) {
    Waveform* const waveform = m_memory.Find(name);
    if (waveform == nullptr) {
        throw CommandFailure(ScpiError::FileNameNotFound, name);
    }
    RequireName(newName);
    RequireNotPlaying(name);
    if (!EqualAnyCase(name, newName) && m_memory.Find(newName) != nullptr) {
        throw CommandFailure(ScpiError::FileNameError, "there is a waveform of the new name");
    }
    if (EqualAnyCase(name, m_selectedName)) {
        m_selectedName = newName;
    }
    RenameInSequence(name, newName);
    Waveform renamed = std::move(*waveform);
    m_memory.Delete(name);
    if (m_store) {
        m_store->Drop(renamed.name);
    }
    renamed.name = newName;
    RequireStored(Keep(std::move(renamed)));
}

void Generator::Delete(const std::string& name) {
    static_cast<void>(WaveformNamed(name));
    RequireNotPlaying(name);
    m_memory.Delete(name);
    DropFromSequence(name);
    if (EqualAnyCase(name, m_selectedName)) {
        m_selectedName.clear();
    }
}

void Generator::DeleteAll() {
    if (m_playing) {
        throw CommandFailure(ScpiError::SettingsConflict, "a waveform is playing");
    }
    m_memory.Clear();
    m_selectedName.clear();
    m_sequence.clear();
}

void Generator::CaptureScreen() {
    if (CapturesByHand()) {
        throw CommandFailure(ScpiError::SettingsConflict,
                             "this model captures its screen at the front panel");
    }
    KeepScreen();
}

void Generator::PressKey(const std::string& key) {
    if (EqualAnyCase(key, "LOCAL")) {
        m_remote = false;
    } else if (EqualAnyCase(key, "TRIGGER") && IsWaitingFor(TriggerSource::External)) {
        m_isWaiting = false;
    } else if (!EqualAnyCase(key, "TRIGGER")) {
        throw CommandFailure(ScpiError::IllegalParameterValue, "the keys are LOCAL and TRIGGER");
    } else if (m_remote) {
        throw CommandFailure(ScpiError::SettingsConflict,
                             "the front panel is locked in remote operation");
    } else {
        KeepScreen();
    }
}

void Generator::KeepScreen() {
    m_files.Put(ScreenCaptureFile, suite::picture::EncodeBitmapFile(DrawScreen(ShownOnScreen())));
}

ScreenContent Generator::ShownOnScreen() {
    ScreenContent content;
    content.model = m_settings.model;
    content.serialNumber = m_settings.serialNumber.value();
    content.firmware = m_settings.firmware;
    content.isRemote = m_remote;
    content.frequencyHz = m_output.frequencyHz;
    content.levelDbm = m_output.levelDbm;
    content.isOutputOn = m_output.isOn;
    content.isPlaying = m_playing;
    content.usedPoints = m_memory.UsedPoints();
    content.freePoints = m_memory.FreePoints();
    content.waveformName = m_selectedName;
    if (const Waveform* const waveform = m_memory.Find(m_selectedName)) {
        content.waveformPoints = waveform->Points();
        ShowChannels(*waveform, content);
    }
    content.errorCount = m_errors.Count();
    if (content.errorCount != 0) {
        const QueuedError& oldest = m_errors.Oldest();
        content.oldestError = std::to_string(oldest.number) + ' ' + oldest.text;
    }
    return content;
}

}  // namespace krv::simulator
