#include "cli/DownloadDestination.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "suite/scpi/InstrumentPanel.h"

namespace krv::cli {
namespace {

// Names stand in messages between quotation marks and commas.
bool MayBeInName(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\'' &&
           character != ',';
}

}  // namespace

DownloadDestination::DownloadDestination(std::shared_ptr<suite::ScpiInstrument> instrument,
                                         std::string name)
    : m_instrument(std::move(instrument)), m_name(std::move(name)) {
    std::optional<suite::MemoryContent> memory;
    TrapErrors([&] { memory = m_instrument->Catalog(); });
    if (!memory) {
        return;
    }
    m_freePoints = memory->freePoints;
    if (const suite::StoredFile* const replaced = FindStored(*memory, m_name)) {
        m_replacedPoints = replaced->points;
    }
}

std::string DownloadDestination::Question() const {
    return "The instrument holds a waveform " + m_name + " of " +
           std::to_string(m_replacedPoints.value_or(0)) + " points.  Replace it?";
}

void DownloadDestination::RequireFree(bool isToPlay) const {
    if (!std::ranges::all_of(m_name, &MayBeInName)) {
        throw Error(ErrorNumber::InvalidCall,
                    "The instrument takes no waveform of the name " + m_name +
                        ": a name is printable ASCII without quotation marks and commas.  Nothing "
                        "has been sent.");
    }
    if (IsTaken() && !isToPlay && suite::InstrumentPanel(m_instrument).PlaysInSequence(m_name)) {
        throw Error(ErrorNumber::PermissionDenied,
                    "The sequence that the instrument plays has the waveform " + m_name +
                        ", so that it can't be replaced.  Nothing has been sent.  krv stop ends "
                        "the sequence; with --play the new waveform is played in its place.");
    }
}

Destination DownloadDestination::ForSending(bool isToPlay) const {
    Destination destination;
    if (m_freePoints) {
        destination.roomPoints = *m_freePoints + m_replacedPoints.value_or(0);
    }
    if (isToPlay) {
        destination.release = [instrument = m_instrument, name = m_name] {
            suite::InstrumentPanel panel(instrument);
            if (EqualIgnoringCase(instrument->SelectedArbFile(), name)) {
                panel.Deselect();
            }
            if (panel.PlaysInSequence(name)) {
                panel.Stop();
            }
        };
    }
    return destination;
}

PlayOutcome DownloadDestination::Play() const {
    suite::InstrumentPanel panel(m_instrument);
    panel.Play(m_name);
    return {panel.Playing().isWaiting, panel.IsOutputOn()};
}

}  // namespace krv::cli
