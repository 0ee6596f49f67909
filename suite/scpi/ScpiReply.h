// Takes the instrument's replies apart, and puts text into messages. A reply that doesn't have the
// form gives nothing; none of these throws Error.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/suite/InstrumentServer.h"
#include "ports/suite/WaveformReadback.h"

namespace krv::suite {

// The reply to *IDN?: maker (left out here), model, serial number, firmware revision.
struct Identity {
    std::string model;
    std::string serialNumber;
    std::string firmwareRevision;
};

[[nodiscard]] std::optional<Identity> ParseIdentity(std::string_view reply);
// The names in the reply to *OPT?; "0" stands for none.
[[nodiscard]] std::vector<std::string> ParseOptions(std::string_view reply);
// E.g. `-225,"Out of memory"`.
[[nodiscard]] std::optional<ports::InstrumentError> ParseError(std::string_view reply);
// The text between double quotes; a quote inside is written twice.
[[nodiscard]] std::optional<std::string> ParseQuoted(std::string_view reply);
// Counts and checksums of codes, Q codes and markers, e.g.
// `2,2,0;#HDB1720A5,#H30694C07,#H00000000;1`.
[[nodiscard]] std::optional<ports::StoredWaveform> ParseStoredWaveform(std::string_view reply);
// A waveform in the instrument's memory.
struct StoredFile {
    std::string name;
    bool isInterleaved = false;
    std::uint64_t points = 0;
};

struct MemoryContent {
    std::uint64_t usedPoints = 0;
    std::uint64_t freePoints = 0;
    // In the instrument's order.
    std::vector<StoredFile> files;
};

// Points used, points free, and the waveforms, e.g. `5,67108859,"Pulse,INT,3","Sine,IQ,2"`.
[[nodiscard]] std::optional<MemoryContent> ParseCatalog(std::string_view reply);
// The waveform of this name, in any case of its letters; null for none.
[[nodiscard]] const StoredFile* FindStored(const MemoryContent& memory, std::string_view name);
// Whether the sequence, e.g. "Sync*1,Data*20", has a segment of this name, in any case of its
// letters.
[[nodiscard]] bool IsInSequence(std::string_view sequence, std::string_view name);
// The text in double quotes, as messages and replies have it.
[[nodiscard]] std::string Quoted(std::string_view text);

}  // namespace krv::suite
