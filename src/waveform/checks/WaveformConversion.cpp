#include "waveform/checks/WaveformConversion.h"

#include <cmath>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "common/Error.h"
#include "common/Text.h"
#include "waveform/checks/ChannelConversion.h"
#include "waveform/checks/PointCountRules.h"

namespace krv::waveform {
namespace {

// One run's conversion after the rules have let it pass: sources, contexts, and the order of the
// passes.
class Conversion {
 public:
    Conversion(const DownloadPlan& plan, const WaveformData& data, const PointCounts& counts,
               PhaseProgress& row)
        : m_plan(plan), m_data(data), m_counts(counts), m_row(row) {
        m_i = SourceOf(data.i, data.iRange);
        if (plan.useQ) {
            m_q = SourceOf(data.q, data.qRange);
        }
        m_codes.isNewModel = counts.newModel;
        m_codes.isSentInterleaved = plan.instrument.isSentInterleaved;
    }

    DacCodes Run() {
        const double percent = m_counts.scalable ? ScalePercent() : 0;
        m_row.ShowMessage(m_counts.scalable ? "Scaling waveform data..."
                                            : "Checking DAC values...");
        const std::int64_t passes = m_counts.scalable ? 2 : 1;
        ConversionProgress progress(m_row,
                                    passes * (std::int64_t{m_counts.iCount} + m_counts.qCount));
        ConvertMarkers();
        if (m_counts.scalable) {
            Scale(percent, progress);
        } else {
            CheckInternal(progress);
        }
        progress.Finish();
        if (m_range.smallest <= m_range.largest) {
            m_codes.smallest = m_range.smallest;
            m_codes.largest = m_range.largest;
        }
        return std::move(m_codes);
    }

 private:
    static std::unique_ptr<SampleSource> Loaded(const Channel& channel, std::size_t count) {
        if (const InternalValues* values = channel.Internal()) {
            return std::make_unique<LoadedInternalValues>(*values, count);
        }
        return std::make_unique<LoadedValues>(channel.Numbers()->Span().first(count));
    }

    [[nodiscard]] std::unique_ptr<SampleSource> SourceOf(const Channel& channel,
                                                         const CellRange& range) const {
        if (m_counts.fromFiles) {
            return Loaded(channel, static_cast<std::size_t>(channel.Count()));
        }
        return std::make_unique<CellValues>(
            range.cells, static_cast<std::size_t>(range.count),
            m_counts.scalable ? CellValues::Passes::Two : CellValues::Passes::One);
    }

    // No larger than the codes allow, whatever the validation looked at: a peak at 100 % fills the
    // output range.
    [[nodiscard]] double ScalePercent() const {
        if (!m_plan.scalePercent) {
            throw Error(ErrorNumber::TypeMismatch, ScaleFactor::NotNumeric);
        }
        if (std::abs(*m_plan.scalePercent) > ScaleFactor::LargestMagnitude) {
            throw Error(ErrorNumber::Overflow, ScaleFactor::TooLarge);
        }
        return *m_plan.scalePercent;
    }

    [[nodiscard]] std::string ContextOf(std::string_view channel) const {
        std::string text = m_counts.fromFiles ? "Invalid data point in " : "Invalid data cell in ";
        text.append(channel).append("-Data.");
        if (m_counts.fromFiles) {
            return text;
        }
        return text.append(CrLf).append(m_plan.speaksOfIntegers
                                            ? "All cells must be integers in the range 0 to 65535."
                                            : "All cells must be numeric.");
    }
    [[nodiscard]] std::string IMeasuredContext() const { return ContextOf("I (and Q)"); }
    [[nodiscard]] std::string IScaledContext() const { return ContextOf("I (or I and Q)"); }
    [[nodiscard]] std::string QContext() const { return ContextOf("Q"); }

    // Without a file the markers are the pulse, whose array is longer than the waveform.
    void ConvertMarkers() {
        const Channel& markers = m_data.markers;
        const auto count =
            static_cast<std::size_t>(m_counts.markerPulse ? m_counts.iCount : markers.Count());
        const std::int16_t mask = MarkerMask(m_counts.newModel);
        const InternalValues* values = markers.Internal();
        if (values != nullptr && AllPass(values->range, false, {0, mask}, FinalStep::None)) {
            m_codes.markers = values->codes.First(count);
            return;
        }
        SampleBuffer<std::int16_t> codes;
        ChannelConversion(*Loaded(markers, count), nullptr)
            .ConvertMarkers("Invalid data point in Marker-Data.", mask, codes);
        m_codes.markers = SharedCodes(std::move(codes));
    }

    // I and Q share one peak and so keep their relative amplitude.
    void Scale(double percent, ConversionProgress& progress) {
        ValueRange values;
        ChannelConversion(*m_i, &progress).Measure(IMeasuredContext(), values);
        if (m_q) {
            ChannelConversion(*m_q, &progress).Measure(QContext(), values);
        }
        const Scaling scaling = ScalingFor(values.Peak(), percent, m_counts.newModel);
        const auto scale = [&](SampleSource& source, const std::string& context) {
            SampleBuffer<std::int16_t> codes;
            ChannelConversion(source, &progress).Scale(context, scaling, codes, m_range);
            return SharedCodes(std::move(codes));
        };
        m_codes.i = scale(*m_i, IScaledContext());
        if (m_q) {
            m_codes.q = scale(*m_q, QContext());
        }
    }

    void CheckInternal(ConversionProgress& progress) {
        const FinalStep step =
            FinalStepFor(m_plan.type == WaveformType::Internal14, m_counts.newModel);
        const auto check = [&](SampleSource& source, const Channel& channel,
                               const std::string& context, CodeBounds bounds) {
            const InternalValues* values = m_counts.fromFiles ? channel.Internal() : nullptr;
            if (values != nullptr && AllPass(values->range, values->isUnsigned, bounds, step)) {
                return FinishInternal(*values, step, progress, m_range);
            }
            SampleBuffer<std::int16_t> codes;
            ChannelConversion(source, &progress)
                .CheckInternal(context, bounds, step, codes, m_range);
            return SharedCodes(std::move(codes));
        };
        m_codes.i = check(*m_i, m_data.i, IMeasuredContext(), IBounds);
        if (m_q) {
            m_codes.q =
                check(*m_q, m_data.q, QContext(), m_counts.newModel ? NewQBounds : OldQBounds);
        }
    }

    const DownloadPlan& m_plan;
    const WaveformData& m_data;
    const PointCounts& m_counts;
    PhaseProgress& m_row;
    std::unique_ptr<SampleSource> m_i;
    std::unique_ptr<SampleSource> m_q;
    DacCodes m_codes;
    CodeRange m_range;
};

PointCounts CountsOf(const DownloadPlan& plan, const WaveformData& data) {
    PointCounts counts;
    counts.newModel = plan.instrument.isNewModel;
    counts.useQ = plan.useQ;
    counts.fromFiles = plan.source == SourceKind::Files;
    counts.scalable = plan.type == WaveformType::Scalable;
    counts.iCount = counts.fromFiles ? data.i.Count() : data.iRange.count;
    if (counts.useQ) {
        counts.qCount = counts.fromFiles ? data.q.Count() : data.qRange.count;
    }
    counts.markerPulse = !plan.markersFromFile;
    counts.markerStart = data.pulse.start;
    counts.markerLength = data.pulse.length;
    return counts;
}

// Shows what the rules have to say; true when the run may go on.
bool RulesAllow(const PointCounts& counts, RunUser& user) {
    const PointCountReport report = CheckPointCounts(counts);
    if (report.refused) {
        user.Tell(report.text, ports::MessageIcon::Critical);
        return false;
    }
    if (report.text.empty()) {
        return true;
    }
    const std::string question = report.text + "\r\n\r\nDo you want to continue?";
    return user.Tell(question, ports::MessageIcon::Exclamation, ports::MessageButtons::YesNo) ==
           ports::MessageAnswer::Yes;
}

}  // namespace

std::optional<DacCodes> CheckAndConvertWaveform(const DownloadPlan& plan, const WaveformData& data,
                                                const RunServices& services) {
    std::string failure;
    try {
        const PointCounts counts = CountsOf(plan, data);
        if (!RulesAllow(counts, services.user)) {
            return std::nullopt;
        }
        return Conversion(plan, data, counts, services.progress).Run();
    } catch (const Error& error) {
        if (error.IsCancel()) {
            return std::nullopt;
        }
        failure = error.Description();
    } catch (const std::bad_alloc&) {
        failure = "There is not enough memory to convert the waveform.";
    }
    services.user.Tell(failure, ports::MessageIcon::Critical);
    return std::nullopt;
}

}  // namespace krv::waveform
