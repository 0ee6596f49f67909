#include "waveform/checks/WaveformConversion.h"

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "common/Error.h"
#include "common/Numbers.h"
#include "common/Text.h"
#include "waveform/checks/ChannelConversion.h"
#include "waveform/data/ModelFamily.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::waveform {
namespace {

// The index of the list that belongs to the chosen source.
int WaveformTypeOf(const frmDataTransfer& dialog) {
    return dialog.optFileFolders.Value ? dialog.cboWaveformType.ListIndex
                                       : dialog.cboWaveformTypeSS.ListIndex;
}

// One run's conversion after the rules have let it pass: sources, contexts, and the order of the
// passes. Codes are built aside and handed over whole.
class Conversion {
 public:
    Conversion(frmDataTransfer& dialog, const PointCounts& counts)
        : m_dialog(dialog),
          m_counts(counts),
          m_i(SourceOf(dialog.Data.IData, dialog.Data.IRange, counts.iCount)) {
        m_codes.IsNewModel = counts.newModel;
        if (counts.useQ) {
            m_q = SourceOf(dialog.Data.QData, dialog.Data.QRange, counts.qCount);
        }
    }

    DacCodes Run() {
        const double percent = m_counts.scalable ? ScalePercent() : 0;
        m_dialog.Callback1().SetWaitMessage(std::int16_t{2}, m_counts.scalable
                                                                 ? "Scaling waveform data..."
                                                                 : "Checking DAC values...");
        const std::int64_t passes = m_counts.scalable ? 2 : 1;
        ConversionProgress progress(m_dialog.Callback1(),
                                    passes * (std::int64_t{m_counts.iCount} + m_counts.qCount));
        ConvertMarkers();
        if (m_counts.scalable) {
            Scale(percent, progress);
        } else {
            CheckInternal(progress);
        }
        progress.Finish();
        if (m_range.smallest <= m_range.largest) {
            m_codes.SmallestCode = m_range.smallest;
            m_codes.LargestCode = m_range.largest;
        }
        return std::move(m_codes);
    }

 private:
    static std::span<const double> FirstOf(const SampleBuffer<double>& values, std::int32_t count) {
        if (count < 0 || static_cast<std::size_t>(count) > values.Size()) {
            throw Error(ErrorNumber::SubscriptOutOfRange);
        }
        return values.Span().first(static_cast<std::size_t>(count));
    }

    std::unique_ptr<SampleSource> SourceOf(const SampleBuffer<double>& values,
                                           const std::shared_ptr<ports::Range>& range,
                                           std::int32_t count) const {
        if (m_counts.fromFiles) {
            return std::make_unique<LoadedValues>(FirstOf(values, count));
        }
        return std::make_unique<CellValues>(
            range, static_cast<std::size_t>(count),
            m_counts.scalable ? CellValues::Passes::Two : CellValues::Passes::One);
    }

    double ScalePercent() const {
        try {
            return TextToDouble(m_dialog.TextScaleFactor.Text.Get(),
                                m_dialog.Services().numberFormat);
        } catch (const Error& error) {
            throw Error(error.Number(), "The Scale factor is not numeric.");
        }
    }

    [[nodiscard]] std::string ContextOf(std::string_view channel) const {
        std::string text = m_counts.fromFiles ? "Invalid data point in " : "Invalid data cell in ";
        text.append(channel).append("-Data.");
        if (m_counts.fromFiles) {
            return text;
        }
        // The file page's type counts here too, although only the other one decides the conversion.
        const bool integers = m_dialog.cboWaveformType.ListIndex > WaveformTypeIndex::Scalable ||
                              m_dialog.cboWaveformTypeSS.ListIndex > WaveformTypeIndex::Scalable;
        return text.append(CrLf).append(integers
                                            ? "All cells must be integers in the range 0 to 65535."
                                            : "All cells must be numeric.");
    }
    [[nodiscard]] std::string IMeasuredContext() const { return ContextOf("I (and Q)"); }
    [[nodiscard]] std::string IScaledContext() const { return ContextOf("I (or I and Q)"); }
    [[nodiscard]] std::string QContext() const { return ContextOf("Q"); }

    // Without a file the markers are the pulse, whose array is longer than the waveform.
    void ConvertMarkers() {
        const WaveformData& data = m_dialog.Data;
        LoadedValues source(FirstOf(data.MarkerData,
                                    m_counts.markerPulse ? m_counts.iCount : data.MarkerNumPoints));
        ChannelConversion(source, nullptr)
            .ConvertMarkers("Invalid data point in Marker-Data.", MarkerMask(m_counts.newModel),
                            m_codes.MarkerDacData);
    }

    // I and Q share one peak and so keep their relative amplitude.
    void Scale(double percent, ConversionProgress& progress) {
        ValueRange values;
        ChannelConversion i(*m_i, &progress);
        i.Measure(IMeasuredContext(), values);
        if (m_q) {
            ChannelConversion(*m_q, &progress).Measure(QContext(), values);
        }
        const Scaling scaling = ScalingFor(values.Peak(), percent, m_counts.newModel);
        i.Scale(IScaledContext(), scaling, m_codes.IDacData, m_range);
        if (m_q) {
            ChannelConversion(*m_q, &progress)
                .Scale(QContext(), scaling, m_codes.QDacData, m_range);
        }
    }

    void CheckInternal(ConversionProgress& progress) {
        const FinalStep step = FinalStepFor(
            WaveformTypeOf(m_dialog) == WaveformTypeIndex::Internal14, m_counts.newModel);
        ChannelConversion(*m_i, &progress)
            .CheckInternal(IMeasuredContext(), IBounds, step, m_codes.IDacData, m_range);
        if (m_q) {
            ChannelConversion(*m_q, &progress)
                .CheckInternal(QContext(), m_counts.newModel ? NewQBounds : OldQBounds, step,
                               m_codes.QDacData, m_range);
        }
    }

    frmDataTransfer& m_dialog;
    const PointCounts& m_counts;
    std::unique_ptr<SampleSource> m_i;
    std::unique_ptr<SampleSource> m_q;
    DacCodes m_codes;
    CodeRange m_range;
};

}  // namespace

bool WaveformConversion::Run() {
    std::string failure;
    try {
        return CheckAndConvert();
    } catch (const Error& error) {
        if (error.IsCancel()) {
            return false;
        }
        failure = error.Description();
    } catch (const std::bad_alloc&) {
        failure = "There is not enough memory to convert the waveform.";
    }
    m_dialog.ShowMessage(failure, ports::MessageIcon::Exclamation);
    return false;
}

bool WaveformConversion::CheckAndConvert() {
    // The codes of an earlier run make room before new ones are made, and none is left to be sent
    // by mistake when this run fails.
    m_dialog.Codes = DacCodes();
    const PointCounts counts = CollectCounts();
    m_dialog.Codes.IsNewModel = counts.newModel;
    if (!RulesAllow(counts)) {
        return false;
    }
    m_dialog.Codes = Conversion(m_dialog, counts).Run();
    return true;
}

PointCounts WaveformConversion::CollectCounts() {
    const WaveformData& data = m_dialog.Data;
    PointCounts counts;
    counts.newModel = IsNewModelName(m_dialog.ConnectedModel());
    counts.useQ = data.UseQData;
    counts.fromFiles = m_dialog.optFileFolders.Value;
    counts.scalable = WaveformTypeOf(m_dialog) <= WaveformTypeIndex::Scalable;
    counts.iCount = counts.fromFiles ? data.INumPoints : data.IRangeCount;
    if (counts.useQ) {
        counts.qCount = counts.fromFiles ? data.QNumPoints : data.QRangeCount;
    }
    counts.markerPulse = !m_dialog.chkMarkerSource.Value;
    if (RulesNeedMarkerPulse(counts)) {
        const NumberFormat& format = m_dialog.Services().numberFormat;
        counts.markerStart = ToInt16(TextToDouble(m_dialog.TextMarkerStart.Text.Get(), format));
        counts.markerLength = ToInt16(TextToDouble(m_dialog.TextMarkerLength.Text.Get(), format));
    }
    return counts;
}

bool WaveformConversion::RulesAllow(const PointCounts& counts) {
    const PointCountReport report = CheckPointCounts(counts);
    if (report.refused) {
        m_dialog.ShowMessage(report.text, ports::MessageIcon::Critical);
        return false;
    }
    if (report.text.empty()) {
        return true;
    }
    const std::string question = report.text + "\r\n\r\nDo you want to continue?";
    return m_dialog.ShowMessage(question, ports::MessageIcon::Exclamation,
                                ports::MessageButtons::YesNo) == ports::MessageAnswer::Yes;
}

}  // namespace krv::waveform
