// Generator: the simulated instrument itself, one for all its clients.
//
// Every use needs Mutex() locked, except the faults, which have a lock of their own, and where a
// member says otherwise.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "simulator/device/Faults.h"
#include "simulator/device/FileStorage.h"
#include "simulator/device/GeneratorSettings.h"
#include "simulator/device/OutputSettings.h"
#include "simulator/device/Sequence.h"
#include "simulator/device/WaveformMemory.h"
#include "simulator/device/WaveformStore.h"
#include "simulator/scpi/ErrorQueue.h"
#include "simulator/scpi/StatusRegisters.h"
#include "simulator/screen/ScreenDrawing.h"
#include "suite/log/ConversationLog.h"

namespace krv::simulator {

class Generator {
 public:
    static constexpr std::size_t MaxNameLength = 23;

    // Throws std::invalid_argument when the settings are no good, std::filesystem::filesystem_error
    // when the folder for waveforms can't be made, Error when the transcript can't be written.
    explicit Generator(GeneratorSettings settings);

    [[nodiscard]] std::mutex& Mutex() noexcept { return m_mutex; }
    [[nodiscard]] const GeneratorSettings& Settings() const noexcept { return m_settings; }
    // Before it has a client.
    void SetSerialNumber(std::string number) { m_settings.serialNumber = std::move(number); }
    [[nodiscard]] ErrorQueue& Errors() noexcept { return m_errors; }
    [[nodiscard]] StatusRegisters& Status() noexcept { return m_status; }
    [[nodiscard]] WaveformMemory& Memory() noexcept { return m_memory; }
    [[nodiscard]] OutputSettings& Output() noexcept { return m_output; }
    [[nodiscard]] const OutputLimits& Limits() const noexcept {
        return OutputLimitsOf(m_settings.model);
    }
    [[nodiscard]] FileStorage& Files() noexcept { return m_files; }
    [[nodiscard]] Faults& ActiveFaults() noexcept { return m_faults; }
    // Null when none is written.
    [[nodiscard]] const std::shared_ptr<suite::ConversationLog>& Transcript() const noexcept {
        return m_transcript;
    }

    // How many bytes of all clients have been carried out since the generator was switched on. Any
    // thread, without the lock.
    [[nodiscard]] std::uint64_t BytesTakenIn() const noexcept { return m_bytesTakenIn; }
    void NoteTakenIn(std::uint64_t bytes) noexcept { m_bytesTakenIn += bytes; }

    // Puts an entry into the error queue and sets its status bit; that an entry is lost is an error
    // with a bit of its own.
    void Report(ScpiError error, std::string_view detail = {});
    void Report(QueuedError error);

    // The settings as they were when the generator was switched on; waveforms, queues, status and
    // faults stay.
    void Reset() noexcept;
    void SetRemote(bool remote) noexcept { m_remote = remote; }
    [[nodiscard]] bool IsRemote() const noexcept { return m_remote; }

    // The older models let their screen be captured at the front panel only.
    [[nodiscard]] bool CapturesByHand() const noexcept;

    // What the display shows; its codes stay valid as long as the lock is held.
    [[nodiscard]] ScreenContent ShownOnScreen();

    // The members that follow throw CommandFailure when they can't be done.

    // Keeps what was received; an earlier waveform of the name and its markers go.
    void KeepWaveform(Waveform waveform);
    // Keeps the markers of a waveform that is there.
    void KeepMarkers(const std::string& name, CodeArray markers);
    [[nodiscard]] const Waveform& WaveformNamed(const std::string& name);
    // Keeps a copy of a waveform and its markers under another name, whose waveform is replaced.
    void Copy(const std::string& name, const std::string& copyName);
    // Fails when there is a waveform of the new name, unless it differs in case only.
    void Rename(const std::string& name, const std::string& newName);
    void Delete(const std::string& name);
    void DeleteAll();

    // The waveform takes the sequence's place. An empty name selects none, which ends playing a
    // waveform.
    void Select(const std::string& name);
    [[nodiscard]] const std::string& SelectedName() const noexcept { return m_selectedName; }
    // The waveforms that are played in turn; they are there.
    void SetSequence(Sequence sequence);
    [[nodiscard]] const Sequence& PlayedSequence() const noexcept { return m_sequence; }
    // In one turn of the sequence.
    [[nodiscard]] std::uint64_t SequencePoints();
    // Whether it is the sequence that is played, and not the selected waveform.
    void PlaySequence(bool playsSequence);
    [[nodiscard]] bool PlaysSequence() const noexcept { return m_playsSequence; }
    // Playing begins at once, or waits for the trigger.
    void SetPlaying(bool playing);
    void SetTriggerSource(TriggerSource source) noexcept;
    [[nodiscard]] bool IsWaiting() const noexcept { return m_isWaiting; }
    // Whatever the trigger's source.
    void Trigger();
    void TriggerFromBus();
    [[nodiscard]] bool IsPlaying() const noexcept { return m_playing; }

    // Keeps a picture of the display as a file.
    void CaptureScreen();
    // A key of the front panel: "LOCAL" ends remote operation, in which the other keys are locked;
    // "TRIGGER" triggers where that is waited for, in remote operation, too, and otherwise captures
    // the screen.
    void PressKey(const std::string& key);

 private:
    void RequireNotPlaying(const std::string& name) const;
    [[nodiscard]] bool IsWaitingFor(TriggerSource source) const noexcept;
    void DropFromSequence(const std::string& name);
    void RenameInSequence(const std::string& name, const std::string& newName);
    void RequireCodes(const CodeArray& codes) const;
    void DropStoredNamesake(const std::string& name);
    // Only where that fault is switched on.
    void Corrupt(CodeArray& codes);
    // In memory and, where there is one, in the store; false when the store can't be written.
    [[nodiscard]] bool Keep(Waveform waveform);
    void FinishReceiving(bool stored);
    static void RequireStored(bool stored);
    void KeepScreen();

    std::mutex m_mutex;
    std::atomic<std::uint64_t> m_bytesTakenIn{0};
    GeneratorSettings m_settings;
    std::optional<WaveformStore> m_store;
    std::shared_ptr<suite::ConversationLog> m_transcript;
    ErrorQueue m_errors;
    StatusRegisters m_status;
    WaveformMemory m_memory;
    OutputSettings m_output;
    FileStorage m_files;
    Faults m_faults;
    std::string m_selectedName;
    Sequence m_sequence;
    bool m_playsSequence = false;
    bool m_playing = false;
    bool m_isWaiting = false;
    bool m_remote = false;
};

}  // namespace krv::simulator
