// Report: the JSON summary of a run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/ImportReport.h"
#include "cli/RecordingServer.h"
#include "cli/TerminalMessageBoxes.h"

namespace krv::cli {

// One channel's codes, as converted.
struct CodesSummary {
    std::size_t count = 0;
    std::uint32_t crc32 = 0;
};

struct Report {
    std::string command;
    // "done", "failed" or "cancelled"; "unfinished" before the end.
    std::string outcome;
    // The text of a failure that no message box has shown, e.g. of the connection.
    std::string error;
    std::string model;
    std::string iFile;
    std::optional<std::string> qFile;
    std::optional<std::string> markerFile;
    // Without a value where nothing was imported.
    std::optional<ImportReport> import;
    std::string destination;
    bool transferred = false;
    // Without a value when it wasn't verified.
    std::optional<bool> verified;
    // By --play.
    bool isPlaying = false;
    // Without a value when the run ended before the codes were ready.
    std::optional<CodesSummary> i;
    std::optional<CodesSummary> q;
    std::optional<CodesSummary> markers;
    std::int16_t smallestCode = 0;
    std::int16_t largestCode = 0;
    std::optional<std::int32_t> estimatedSeconds;
    std::uint64_t totalMs = 0;
    std::optional<std::int64_t> readMs;
    std::optional<std::int64_t> convertMs;
    std::optional<std::int64_t> transferMs;
    std::vector<SentArray> sent;
    std::vector<ports::InstrumentError> instrumentErrors;
    std::vector<TerminalMessageBoxes::ShownMessage> messages;
};

// Nothing is there, or a report.
[[nodiscard]] bool MayBecomeReport(const std::string& file);

// The report as one JSON object, documented in the manual.
[[nodiscard]] std::string ReportJson(const Report& report);

}  // namespace krv::cli
