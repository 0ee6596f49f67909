#include "waveform/checks/ChannelConversion.h"

#include <optional>
#include <span>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"

namespace krv::waveform {

namespace {

// No bar shows smaller steps. Moving it takes longer than asking for the cancel flag, and with
// every block of a large waveform took 2 % of the conversion.
constexpr std::int64_t BarSteps = 1000;

}  // namespace

ConversionProgress::ConversionProgress(PhaseProgress& row, std::int64_t total)
    : m_row(row), m_total(total) {
    Show(0);
}

void ConversionProgress::Advance(std::size_t values) {
    m_done += static_cast<std::int64_t>(values);
    if (values < SampleSource::BlockSize) {
        return;
    }
    if (m_done - m_shown >= m_total / BarSteps) {
        Show(m_done);
    }
    if (m_row.IsCancelled()) {
        throw CancelError();
    }
}

void ConversionProgress::Finish() {
    Show(m_total);
}

// The bar counts in 32 bits; beyond that it is full early.
void ConversionProgress::Show(std::int64_t done) {
    m_shown = done;
    const auto shown = [](std::int64_t count) {
        return static_cast<std::int32_t>(std::min<std::int64_t>(count, INT32_MAX));
    };
    m_row.ShowProgress(shown(m_total), shown(done));
}

template <class Work>
void ChannelConversion::ForEachBlock(const std::string& context, const Work& work) {
    for (std::size_t first = 0; first < m_source.Count();) {
        const std::size_t length = m_source.BlockLength(first);
        const std::span<const double> block = m_source.Block(first);
        std::optional<Failure> failure = work(block, first);
        if (!failure && block.size() < length) {
            failure = Failure{block.size(), ErrorNumber::TypeMismatch};
        }
        if (failure) {
            throw Error(failure->errorNumber,
                        context + std::string(CrLf) + m_source.PlaceOf(first + failure->index));
        }
        first += length;
        if (m_progress != nullptr) {
            m_progress->Advance(length);
        }
    }
}

namespace {

std::span<std::int16_t> MakeRoom(SampleBuffer<std::int16_t>& codes, std::size_t count) {
    codes.Reset(count);
    codes.Resize(count);
    return codes.Span();
}

}  // namespace

SharedCodes FinishInternal(const InternalValues& values, FinalStep step,
                           ConversionProgress& progress, CodeRange& range) {
    const std::span<const std::int16_t> codes = values.codes.Span();
    SampleBuffer<std::int16_t> finished;
    const std::span<std::int16_t> room =
        KeepsCodes(step) ? std::span<std::int16_t>() : MakeRoom(finished, codes.size());
    for (std::size_t first = 0; first < codes.size(); first += SampleSource::BlockSize) {
        const std::size_t length = std::min(SampleSource::BlockSize, codes.size() - first);
        if (!room.empty()) {
            FinishCodes(step, codes.subspan(first, length), room.subspan(first));
        }
        progress.Advance(length);
    }
    if (!codes.empty()) {
        range.Add(FinishedRange(step, values.range));
    }
    return KeepsCodes(step) ? values.codes : SharedCodes(std::move(finished));
}

void ChannelConversion::Measure(const std::string& context, ValueRange& range) {
    ForEachBlock(context, [&](std::span<const double> block, std::size_t) {
        const auto bad = AddToRange(block, range);
        return bad ? std::optional(Failure{bad->index, ErrorNumber::Overflow}) : std::nullopt;
    });
}

void ChannelConversion::Scale(const std::string& context, const Scaling& scaling,
                              SampleBuffer<std::int16_t>& codes, CodeRange& range) {
    const std::span<std::int16_t> all = MakeRoom(codes, m_source.Count());
    ForEachBlock(context,
                 [&](std::span<const double> block, std::size_t first) -> std::optional<Failure> {
                     const auto converted = all.subspan(first, block.size());
                     if (const auto bad = ScaleToCodes(block, scaling, converted, range)) {
                         return Failure{bad->index, ErrorNumber::Overflow};
                     }
                     return std::nullopt;
                 });
}

void ChannelConversion::CheckInternal(const std::string& context, CodeBounds bounds, FinalStep step,
                                      SampleBuffer<std::int16_t>& codes, CodeRange& range) {
    const std::span<std::int16_t> all = MakeRoom(codes, m_source.Count());
    ForEachBlock(context,
                 [&](std::span<const double> block, std::size_t first) -> std::optional<Failure> {
                     const auto converted = all.subspan(first, block.size());
                     if (RoundToFinalCodes(block, bounds, step, converted, range)) {
                         return std::nullopt;
                     }
                     CodeRange blockRange;
                     const auto bad = RoundToCodes(block, bounds, converted, blockRange);
                     if (bad) {
                         // A code in front of the bad value may fail the final step, and is then
                         // the first.
                         blockRange = RangeOf(converted.first(bad->index));
                     }
                     const auto checked = converted.first(bad ? bad->index : converted.size());
                     if (const auto unsuited = ApplyFinalStep(step, checked, blockRange)) {
                         return Failure{unsuited->index, ErrorNumber::Overflow};
                     }
                     if (bad) {
                         return Failure{bad->index, ErrorNumber::TypeMismatch};
                     }
                     range.Add(blockRange);
                     return std::nullopt;
                 });
}

void ChannelConversion::ConvertMarkers(const std::string& context, std::int16_t mask,
                                       SampleBuffer<std::int16_t>& codes) {
    const std::span<std::int16_t> all = MakeRoom(codes, m_source.Count());
    ForEachBlock(context,
                 [&](std::span<const double> block, std::size_t first) -> std::optional<Failure> {
                     const auto converted = all.subspan(first, block.size());
                     CodeRange unused;
                     if (const auto bad = RoundToCodes(block, MarkerBounds, converted, unused)) {
                         return Failure{bad->index, ErrorNumber::Overflow};
                     }
                     MaskMarkers(mask, converted);
                     return std::nullopt;
                 });
}

}  // namespace krv::waveform
