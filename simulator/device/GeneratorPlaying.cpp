// What the generator plays, and when it begins.
#include <algorithm>

#include "simulator/device/Generator.h"
#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {

void Generator::Select(const std::string& name) {
    m_selectedName = name.empty() ? name : WaveformNamed(name).name;
    m_playsSequence = m_playsSequence && name.empty();
    if (m_selectedName.empty() && !m_playsSequence) {
        m_playing = m_isWaiting = false;
    }
}

void Generator::SetSequence(Sequence sequence) {
    if (m_playing && m_playsSequence) {
        throw CommandFailure(ScpiError::SettingsConflict, "the sequence is playing");
    }
    for (const Segment& segment : sequence) {
        static_cast<void>(WaveformNamed(segment.name));
    }
    m_sequence = std::move(sequence);
}

std::uint64_t Generator::SequencePoints() {
    std::uint64_t points = 0;
    for (const Segment& segment : m_sequence) {
        points += WaveformNamed(segment.name).Points() * segment.repeats;
    }
    return points;
}

void Generator::PlaySequence(bool playsSequence) {
    if (m_playing && playsSequence != m_playsSequence) {
        throw CommandFailure(ScpiError::SettingsConflict, "a waveform is playing");
    }
    m_playsSequence = playsSequence;
}

void Generator::SetPlaying(bool playing) {
    if (playing && m_playsSequence && m_sequence.empty()) {
        throw CommandFailure(ScpiError::SettingsConflict, "the sequence is empty");
    }
    if (playing && !m_playsSequence && m_selectedName.empty()) {
        throw CommandFailure(ScpiError::SettingsConflict, "no waveform is selected");
    }
    const bool begins = playing && !m_playing;
    m_playing = playing;
    m_isWaiting =
        playing && (m_isWaiting || begins) && m_output.triggerSource != TriggerSource::Immediate;
}

void Generator::SetTriggerSource(TriggerSource source) noexcept {
    m_output.triggerSource = source;
    m_isWaiting = m_isWaiting && source != TriggerSource::Immediate;
}

void Generator::Trigger() {
    if (!m_isWaiting) {
        throw CommandFailure(ScpiError::TriggerIgnored);
    }
    m_isWaiting = false;
}

void Generator::TriggerFromBus() {
    if (!IsWaitingFor(TriggerSource::Bus)) {
        throw CommandFailure(ScpiError::TriggerIgnored);
    }
    m_isWaiting = false;
}

bool Generator::IsWaitingFor(TriggerSource source) const noexcept {
    return m_isWaiting && m_output.triggerSource == source;
}

void Generator::RequireNotPlaying(const std::string& name) const {
    const bool isPlayed = m_playsSequence
                              ? std::ranges::any_of(m_sequence,
                                                    [&](const Segment& segment) {
                                                        return EqualAnyCase(segment.name, name);
                                                    })
                              : EqualAnyCase(name, m_selectedName);
    if (m_playing && isPlayed) {
        throw CommandFailure(ScpiError::SettingsConflict, "the waveform is playing");
    }
}

void Generator::DropFromSequence(const std::string& name) {
    std::erase_if(m_sequence,
                  [&](const Segment& segment) { return EqualAnyCase(segment.name, name); });
}

void Generator::RenameInSequence(const std::string& name, const std::string& newName) {
    for (Segment& segment : m_sequence) {
        if (EqualAnyCase(segment.name, name)) {
            segment.name = newName;
        }
    }
}

}  // namespace krv::simulator
