// DownloadPlan: what the user asked for, taken from the form's fields once they have been
// validated, and the instrument that a run is for. It stays as it is while the run lasts.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"

namespace krv::waveform {

// The connected instrument, asked for its model once, at the start of a run.
struct InstrumentInUse {
    // Never null in a plan.
    std::shared_ptr<ports::InstrumentServer> server;
    // Blanks trimmed.
    std::string model;
    // Takes 16-bit codes; may take I and Q interleaved in one source.
    bool isNewModel = false;
    // Written with the interleaved call.
    bool isSentInterleaved = false;
};

enum class SourceKind : std::uint8_t { Files, Cells };
// What I, Q and marker files hold. The byte order also says how a sample is meant: low byte first
// it is signed, high byte first unsigned.
enum class FileType : std::uint8_t { Ascii, LittleEndian, BigEndian };
// What the values are: any scale, or codes of 14 or 16 bits.
enum class WaveformType : std::uint8_t { Scalable, Internal14, Internal16 };
// How far the run goes: to the estimate, to the instrument, or to the codes.
enum class RunMode : std::uint8_t { Validate, Download, Convert };

struct DownloadPlan {
    InstrumentInUse instrument;
    RunMode mode = RunMode::Validate;
    SourceKind source = SourceKind::Files;
    // A separate Q file or Q range takes part.
    bool useQ = false;

    // Names in UTF-8, or range texts; blanks trimmed.
    std::string iSource;
    std::string qSource;
    FileType fileType = FileType::Ascii;
    WaveformType type = WaveformType::Scalable;
    // The type of either page is one of codes: messages about cells then speak of integers.
    bool speaksOfIntegers = false;
    // The percentage of the full output range; nothing where the field holds no number.
    std::optional<double> scalePercent;

    bool markersFromFile = false;
    std::string markerFile;
    // The pulse without a marker file, as typed: not every validation looks at these.
    std::string markerStart;
    std::string markerLength;

    // Blanks trimmed.
    std::string destination;
    // Asked what the instrument holds after the transfer; null verifies nothing.
    std::shared_ptr<ports::WaveformReadback> verifyWith;
};

}  // namespace krv::waveform
