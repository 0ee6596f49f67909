// Channel: the values of one source, I, Q or markers, with where they come from; and what the three
// make together. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "common/memory/SampleBuffer.h"
#include "ports/desktop/FileSystem.h"
#include "ports/office/Excel.h"
#include "waveform/data/Codes.h"

namespace krv::waveform {

// The values of a binary file or a marker pulse: 16 bits each, kept as signed numbers.
struct InternalValues {
    SharedCodes codes;
    // The bits mean 0 to 65535 instead of -32768 to 32767.
    bool isUnsigned = false;
    // The range of `codes`, whatever the bits mean.
    CodeRange range;
};

struct Channel {
    // Numbers of a text file are doubles. For a model that takes interleaved data and no separate Q
    // source, the I channel holds I at even positions and Q at odd ones.
    std::variant<SampleBuffer<double>, InternalValues> values;
    // The path of the file that was read, in UTF-8, and its date last modified; empty for a pulse.
    std::string source;
    ports::FileTime date;
    // The values are the whole of what the file holds.
    bool loaded = false;

    // Null where the values are 16-bit values.
    [[nodiscard]] const SampleBuffer<double>* Numbers() const noexcept {
        return std::get_if<SampleBuffer<double>>(&values);
    }
    // Null where the values are doubles.
    [[nodiscard]] const InternalValues* Internal() const noexcept {
        return std::get_if<InternalValues>(&values);
    }
    // How many values there are; no reader takes more than 2^31 - 1.
    [[nodiscard]] std::int32_t Count() const noexcept {
        const auto* numbers = Numbers();
        return static_cast<std::int32_t>(numbers != nullptr ? numbers->Size()
                                                            : Internal()->codes.Size());
    }
    // Gives the memory back, unless codes share it.
    void Forget() noexcept { *this = {}; }
};

// A resolved range of cells, whose values stay in the spreadsheet until they are checked.
struct CellRange {
    std::shared_ptr<ports::Range> cells;
    std::int32_t count = 0;
};

// A marker pulse: so many points from a start on, which counts from 0.
struct MarkerPulse {
    std::int16_t start = 0;
    std::int16_t length = 0;
};

// What a download dialog holds from one run to the next.
struct WaveformData {
    Channel i;
    Channel q;
    // Without a marker file these are the pulse, one value longer than the waveform and not loaded.
    Channel markers;
    MarkerPulse pulse;
    CellRange iRange;
    CellRange qRange;
};

}  // namespace krv::waveform
