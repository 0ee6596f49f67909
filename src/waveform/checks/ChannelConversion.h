// ChannelConversion: the passes over one channel's values, in blocks, with progress and cancel.
//
// Each pass throws Error for the first bad value: the context text, and on a line of its own where
// the value stands. A cancel surfaces as CancelError.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "common/memory/SampleBuffer.h"
#include "waveform/checks/DacConversion.h"
#include "waveform/checks/SampleSource.h"
#include "waveform/data/RunProgress.h"

namespace krv::waveform {

// The phase's row while values are gone through.
class ConversionProgress {
 public:
    // `total` counts each value once a pass.
    ConversionProgress(PhaseProgress& row, std::int64_t total);

    // After each whole block of a channel: moves the bar on, as far as a bar can show it, and asks
    // whether to go on; throws CancelError. What is left at a channel's end only counts.
    void Advance(std::size_t values);
    void Finish();

 private:
    void Show(std::int64_t done);

    PhaseProgress& m_row;
    std::int64_t m_total;
    std::int64_t m_done = 0;
    std::int64_t m_shown = 0;
};

// The codes of 16-bit values that all pass the step: nothing is gone through where the step keeps
// them, and the codes are then the values' own array. `range` is widened by the codes.
[[nodiscard]] SharedCodes FinishInternal(const InternalValues& values, FinalStep step,
                                         ConversionProgress& progress, CodeRange& range);

class ChannelConversion {
 public:
    // No progress (null) for values that the bar doesn't count.
    ChannelConversion(SampleSource& source, ConversionProgress* progress) noexcept
        : m_source(source), m_progress(progress) {}

    void Measure(const std::string& context, ValueRange& range);

    // These take room for the channel's codes and widen `range` by them.
    void Scale(const std::string& context, const Scaling& scaling,
               SampleBuffer<std::int16_t>& codes, CodeRange& range);
    void CheckInternal(const std::string& context, CodeBounds bounds, FinalStep step,
                       SampleBuffer<std::int16_t>& codes, CodeRange& range);
    void ConvertMarkers(const std::string& context, std::int16_t mask,
                        SampleBuffer<std::int16_t>& codes);

 private:
    struct Failure {
        std::size_t index;
        std::int32_t errorNumber;
    };
    // Work takes a block and the index of its first value and returns an optional Failure.
    template <class Work>
    void ForEachBlock(const std::string& context, const Work& work);

    SampleSource& m_source;
    ConversionProgress* m_progress;
};

}  // namespace krv::waveform
