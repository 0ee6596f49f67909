#include "cli/DownloadDestination.h"

#include <utility>

#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "suite/scpi/InstrumentPanel.h"

namespace krv::cli {

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

Destination DownloadDestination::ForSending(bool isToPlay) const {
    Destination destination;
    if (m_freePoints) {
        destination.roomPoints = *m_freePoints + m_replacedPoints.value_or(0);
    }
    if (isToPlay) {
        destination.release = [instrument = m_instrument, name = m_name] {
            if (EqualIgnoringCase(instrument->SelectedArbFile(), name)) {
                suite::InstrumentPanel(instrument).Deselect();
            }
        };
    }
    return destination;
}

bool DownloadDestination::Play() const {
    suite::InstrumentPanel panel(m_instrument);
    panel.Play(m_name);
    return panel.IsOutputOn();
}

}  // namespace krv::cli
