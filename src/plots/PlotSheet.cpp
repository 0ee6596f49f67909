#include "plots/PlotSheet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "analysis/Ccdf.h"
#include "analysis/Measures.h"
#include "analysis/Spectrum.h"
#include "plots/Envelope.h"
#include "plots/Panel.h"

namespace krv::plots {
namespace {

constexpr double Left = 90;
constexpr double Right = SheetSize::Width - 30;
constexpr std::size_t ConstellationSide = 128;
constexpr double SpectrumFloorDb = -120;
constexpr double CcdfFloor = -6;

struct TimeUnit {
    double size;
    const char* label;
};

// So that the numbers on the axis are neither long nor small.
TimeUnit TimeUnitOf(double seconds) {
    return seconds >= 1      ? TimeUnit{1, "s"}
           : seconds >= 1e-3 ? TimeUnit{1e-3, "ms"}
           : seconds >= 1e-6 ? TimeUnit{1e-6, "us"}
                             : TimeUnit{1e-9, "ns"};
}

TimeUnit FrequencyUnitOf(double hertz) {
    return hertz >= 1e9   ? TimeUnit{1e9, "GHz"}
           : hertz >= 1e6 ? TimeUnit{1e6, "MHz"}
           : hertz >= 1e3 ? TimeUnit{1e3, "kHz"}
                          : TimeUnit{1, "Hz"};
}

Axis TimeAxis(const analysis::Signal& signal) {
    const auto points = static_cast<double>(signal.points);
    if (!signal.sampleRate) {
        return {0, points, "point"};
    }
    const double seconds = points / *signal.sampleRate;
    const TimeUnit unit = TimeUnitOf(seconds);
    return {0, seconds / unit.size, std::string("time in ") + unit.label};
}

class SheetDrawing {
 public:
    SheetDrawing(const PlotSubject& subject, Canvas& canvas)
        : m_subject(subject), m_signal(subject.signal), m_canvas(canvas) {}

    void Draw() {
        m_canvas.Write({Left, 22}, m_subject.title, Anchor::Left);
        DrawTime();
        DrawSpectrum();
        DrawConstellation();
        DrawCcdf();
    }

 private:
    void DrawTime() {
        Panel panel(m_canvas, {Left, 66}, {Right, 330}, TimeAxis(m_signal), {-1, 1, ""});
        panel.DrawFrame("I and Q, of full scale");
        m_canvas.Write({Right - 90, 52}, "I", Anchor::Right);
        m_canvas.Fill({Right - 84, 49}, {Right - 54, 55}, Ink::I);
        m_canvas.Write({Right - 36, 52}, "Q", Anchor::Right);
        m_canvas.Fill({Right - 30, 49}, {Right, 55}, Ink::Q);
        const Envelope envelope =
            EnvelopeOf(m_signal, static_cast<std::size_t>(std::lround(panel.Width())));
        if (m_signal.hasQ) {
            DrawEnvelope(panel, envelope.q, Ink::Q);
        }
        DrawEnvelope(panel, envelope.i, Ink::I);
        DrawMarkers(envelope.i.size());
    }

    // Where each point has a column of its own, a line through them; otherwise each column's range.
    void DrawEnvelope(Panel& panel, const std::vector<Extent>& ranges, Ink ink) {
        const Axis time = TimeAxis(m_signal);
        const double step = time.to / static_cast<double>(ranges.size());
        std::vector<Spot> line;
        for (std::size_t column = 0; column < ranges.size(); ++column) {
            const double x = (static_cast<double>(column) + 0.5) * step;
            // Up and down in turn, so that the line passes the columns without detours.
            const bool isUpwards = column % 2 == 0;
            line.push_back({x, isUpwards ? ranges[column].lowest : ranges[column].highest});
            line.push_back({x, isUpwards ? ranges[column].highest : ranges[column].lowest});
        }
        panel.Line(line, ink);
    }

    void DrawMarkers(std::size_t columns) {
        if (m_subject.markers.empty()) {
            return;
        }
        const std::vector<std::uint8_t> bits =
            MarkersOf(m_subject.markers, m_signal.points, columns);
        constexpr int Markers = 4;
        const double width = (Right - Left) / static_cast<double>(columns);
        for (int marker = 0; marker < Markers; ++marker) {
            const auto isSet = [marker](std::uint8_t column) {
                return (unsigned{column} >> static_cast<unsigned>(marker) & 1U) != 0;
            };
            if (std::ranges::none_of(bits, isSet)) {
                continue;
            }
            const double y = 372 + 17 * marker;
            m_canvas.Write({Left - 7, y + 4}, "M" + std::to_string(marker + 1), Anchor::Right);
            for (std::size_t column = 0; column < columns; ++column) {
                if (isSet(bits[column])) {
                    const double x = Left + static_cast<double>(column) * width;
                    m_canvas.Fill({x, y}, {x + width, y + 8}, Ink::Marker);
                }
            }
        }
    }

    void DrawSpectrum() {
        const analysis::Spectrum spectrum = analysis::SpectrumOf(m_signal);
        const double rate = m_signal.sampleRate.value_or(1);
        const TimeUnit unit = m_signal.sampleRate ? FrequencyUnitOf(rate / 2)
                                                  : TimeUnit{1, "shares of the sample rate"};
        Panel panel(m_canvas, {Left, 466}, {Left + 430, 740},
                    {-rate / 2 / unit.size, rate / 2 / unit.size,
                     std::string("frequency in ") + unit.label},
                    {SpectrumFloorDb, 0, ""});
        panel.DrawFrame("Spectrum in dBFS, Hann window");
        std::vector<Spot> line;
        for (std::size_t band = 0; band < spectrum.power.size(); ++band) {
            const double level = 10 * std::log10(std::max(spectrum.power[band], 1e-30));
            line.push_back({spectrum.FrequencyOf(band) * rate / unit.size, level});
        }
        panel.Line(line, Ink::Trace);
    }

    void DrawConstellation() {
        Panel panel(m_canvas, {Left + 500, 466}, {Left + 774, 740}, {-1, 1, "I"}, {-1, 1, ""});
        panel.DrawFrame("Q over I");
        const std::vector<std::uint32_t> cells = DensityOf(m_signal, ConstellationSide);
        constexpr double Cell = 2.0 / ConstellationSide;
        for (std::size_t row = 0; row < ConstellationSide; ++row) {
            for (std::size_t column = 0; column < ConstellationSide; ++column) {
                if (cells[row * ConstellationSide + column] > 0) {
                    const double x = -1 + static_cast<double>(column) * Cell;
                    const double y = 1 - static_cast<double>(row) * Cell;
                    panel.Fill({x, y}, {x + Cell, y - Cell}, Ink::Trace);
                }
            }
        }
    }

    void DrawCcdf() {
        const double rms = analysis::Measure(m_signal).rms;
        const analysis::Ccdf ccdf = analysis::CcdfOf(m_signal, rms * rms);
        const double end =
            std::max(10.0, analysis::Ccdf::StepDb * static_cast<double>(ccdf.shares.size()));
        Panel panel(m_canvas, {Left + 860, 466}, {Right, 740}, {0, end, "dB above the mean"},
                    {CcdfFloor, 0, ""});
        panel.DrawFrame("CCDF, and of noise", true);
        std::vector<Spot> noise;
        for (double level = 0; level <= end; level += analysis::Ccdf::StepDb) {
            noise.push_back({level, -std::pow(10, level / 10) / std::log(10)});
        }
        panel.Line(noise, Ink::Frame);
        std::vector<Spot> line;
        for (std::size_t step = 0; step < ccdf.shares.size(); ++step) {
            line.push_back({analysis::Ccdf::StepDb * static_cast<double>(step),
                            std::log10(std::max(ccdf.shares[step], 1e-30))});
        }
        panel.Line(line, Ink::Trace);
    }

    const PlotSubject& m_subject;
    const analysis::Signal& m_signal;
    Canvas& m_canvas;
};

}  // namespace

void DrawSheet(const PlotSubject& subject, Canvas& canvas) {
    SheetDrawing(subject, canvas).Draw();
}

}  // namespace krv::plots
