// DownloadDestination: the place in the instrument's memory that a download goes to, and what is
// there before it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "cli/RecordingServer.h"
#include "suite/scpi/ScpiInstrument.h"

namespace krv::cli {

struct PlayOutcome {
    // It plays with the trigger that the instrument waits for.
    bool isWaiting = false;
    bool isOutputOn = false;
};

class DownloadDestination {
 public:
    // Asks the instrument for its catalogue. One that has none is not held against the download.
    DownloadDestination(std::shared_ptr<suite::ScpiInstrument> instrument, std::string name);

    // The instrument holds a waveform of this name.
    [[nodiscard]] bool IsTaken() const noexcept { return m_replacedPoints.has_value(); }
    [[nodiscard]] std::string Question() const;
    // Throws Error where the instrument won't take the waveform: under this name, or because a
    // sequence that plays has it and the new one is not to be played in its place.
    void RequireFree(bool isToPlay) const;
    // What sending has to keep to. A waveform of the name that is selected can't be written to: it
    // is let go of where the new one is to be played in its place.
    [[nodiscard]] Destination ForSending(bool isToPlay) const;
    // Throws Error.
    [[nodiscard]] PlayOutcome Play() const;

 private:
    std::shared_ptr<suite::ScpiInstrument> m_instrument;
    std::string m_name;
    std::optional<std::uint64_t> m_freePoints;
    std::optional<std::uint64_t> m_replacedPoints;
};

}  // namespace krv::cli
