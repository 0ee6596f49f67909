// DownloadPlan: what the user asked for, taken from the form's fields once they have been
// validated, and the instrument that a run is for. It stays as it is while the run lasts.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "ports/office/Excel.h"
#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"

namespace krv::waveform {

// The connected instrument, asked what it is once, at the start of a run.
struct InstrumentInUse {
    // Both never null in a plan. The server may come to hold another instrument while the run
    // lasts.
    std::shared_ptr<ports::InstrumentServer> server;
    std::shared_ptr<ports::ConnectedInstrument> connected;
    // Both empty where there is no session, as for a conversion.
    std::string serialNumber;
    std::string address;
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

// The rules of the scale factor, in percent, and what is said of one that breaks them.
namespace ScaleFactor {
inline constexpr double LargestMagnitude = 100;
inline constexpr const char* NotNumeric = "The Scale factor is not numeric.";
inline constexpr const char* TooLarge = "The magnitude of the Scale Factor must be <= 100.";
}  // namespace ScaleFactor

struct DownloadPlan {
    InstrumentInUse instrument;
    RunMode mode = RunMode::Validate;
    SourceKind source = SourceKind::Files;
    // A separate Q file or Q range takes part.
    bool useQ = false;

    // Names in UTF-8, or range texts; blanks trimmed.
    std::string iSource;
    std::string qSource;
    // The sheets that the range texts led to when they were checked.
    ports::SheetName iSheet;
    ports::SheetName qSheet;
    FileType fileType = FileType::Ascii;
    WaveformType type = WaveformType::Scalable;
    // The type of either page is one of codes: messages about cells then speak of integers.
    bool speaksOfIntegers = false;
    // The percentage of the full output range; nothing where the field holds no number, infinity
    // for one beyond the double range. Not every validation looks at it.
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
