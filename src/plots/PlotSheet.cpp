#include "plots/PlotSheet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plots/Cells.h"
#include "plots/Envelope.h"
#include "plots/Panel.h"
#include "plots/SheetLayout.h"

namespace krv::plots {
namespace {

constexpr std::size_t PointCells = 128;
constexpr std::size_t PathCells = 256;
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

// Of the points that the view shows.
Axis TimeAxis(const analysis::Signal& signal, const SheetView& view) {
    const auto first = static_cast<double>(view.firstPoint);
    const double end = first + static_cast<double>(view.points);
    if (!signal.sampleRate) {
        return {first, end, "point"};
    }
    const TimeUnit unit = TimeUnitOf(static_cast<double>(view.points) / *signal.sampleRate);
    const double step = 1 / *signal.sampleRate / unit.size;
    return {first * step, end * step, std::string("time in ") + unit.label};
}

// The signal's points that the view shows, as a signal.
analysis::Signal PartOf(const analysis::Signal& signal, const SheetView& view) {
    analysis::Signal part = signal;
    part.points = view.points;
    part.copy = [&signal, offset = view.firstPoint](std::size_t first, std::span<double> i,
                                                    std::span<double> q) {
        signal.copy(offset + first, i, q);
    };
    return part;
}

class SheetDrawing {
 public:
    SheetDrawing(const PlotSubject& subject, const SheetContent& content, const SheetView& view,
                 Canvas& canvas)
        : m_subject(subject),
          m_signal(subject.signal),
          m_content(content),
          m_view(view),
          m_layout(SheetLayout::Of(view)),
          m_canvas(canvas) {}

    void Draw() {
        m_canvas.Write({m_layout.time.leftTop.x, 22}, m_subject.title, Anchor::Left);
        DrawTime();
        DrawSpectrum();
        DrawConstellation();
        DrawCcdf();
    }

 private:
    [[nodiscard]] Panel PanelAt(const PanelPlace& place, Axis x, Axis y) const {
        return {m_canvas, place.leftTop, place.rightBottom, std::move(x), std::move(y)};
    }

    void DrawTime() {
        Panel panel = PanelAt(m_layout.time, TimeAxis(m_signal, m_view), {-1, 1, ""});
        panel.DrawFrame("I and Q, of full scale");
        const double right = m_layout.time.rightBottom.x;
        m_canvas.Write({right - 90, 52}, "I", Anchor::Right);
        m_canvas.Fill({right - 84, 49}, {right - 54, 55}, Ink::I);
        m_canvas.Write({right - 36, 52}, "Q", Anchor::Right);
        m_canvas.Fill({right - 30, 49}, {right, 55}, Ink::Q);
        const Envelope envelope = EnvelopeOf(PartOf(m_signal, m_view),
                                             static_cast<std::size_t>(std::lround(panel.Width())));
        const std::size_t columns = envelope.i.size();
        if (m_signal.hasQ) {
            DrawEnvelope(panel, envelope.q, Ink::Q, 0, columns);
        }
        DrawEnvelope(panel, envelope.i, Ink::I, 0, columns);
        if (m_signal.hasQ && m_view.points > columns) {
            DrawStripes(panel, envelope.q);
        }
        DrawMarkers(columns);
    }

    // Where columns hold many points, one channel would hide the other: Q shows through in stripes.
    void DrawStripes(Panel& panel, const std::vector<Extent>& ranges) {
        constexpr std::size_t Stripe = 5;
        for (std::size_t from = Stripe; from < ranges.size(); from += 2 * Stripe) {
            DrawEnvelope(panel, ranges, Ink::Q, from, std::min(from + Stripe, ranges.size()));
        }
    }

    // Where each point has a column of its own, a line through them; otherwise each column's range.
    void DrawEnvelope(Panel& panel, const std::vector<Extent>& ranges, Ink ink, std::size_t from,
                      std::size_t to) {
        const Axis time = TimeAxis(m_signal, m_view);
        const double step = (time.to - time.from) / static_cast<double>(ranges.size());
        std::vector<Spot> line;
        for (std::size_t column = from; column < to; ++column) {
            const double x = time.from + (static_cast<double>(column) + 0.5) * step;
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
        const std::vector<std::uint8_t> bits = MarkersOf(
            m_subject.markers.subspan(m_view.firstPoint, m_view.points), m_view.points, columns);
        constexpr unsigned Markers = 4;
        for (unsigned marker = 0; marker < Markers; ++marker) {
            const auto isSet = [marker](std::uint8_t column) {
                return (unsigned{column} >> marker & 1U) != 0;
            };
            if (std::ranges::any_of(m_subject.markers, isSet)) {
                DrawMarker(marker, bits);
            }
        }
    }

    void DrawMarker(unsigned marker, const std::vector<std::uint8_t>& bits) {
        const PanelPlace& place = m_layout.time;
        const double width =
            (place.rightBottom.x - place.leftTop.x) / static_cast<double>(bits.size());
        const double y = place.rightBottom.y + 42 + 17 * marker;
        m_canvas.Write({place.leftTop.x - 7, y + 4}, "M" + std::to_string(marker + 1),
                       Anchor::Right);
        for (std::size_t column = 0; column < bits.size(); ++column) {
            if ((unsigned{bits[column]} >> marker & 1U) != 0) {
                const double x = place.leftTop.x + static_cast<double>(column) * width;
                m_canvas.Fill({x, y}, {x + width, y + 8}, Ink::Marker);
            }
        }
    }

    void DrawSpectrum() {
        const analysis::Spectrum& spectrum = m_content.spectrum;
        const double rate = m_signal.sampleRate.value_or(1);
        const TimeUnit unit = m_signal.sampleRate ? FrequencyUnitOf(rate / 2)
                                                  : TimeUnit{1, "shares of the sample rate"};
        Panel panel = PanelAt(m_layout.spectrum,
                              {-rate / 2 / unit.size, rate / 2 / unit.size,
                               std::string("frequency in ") + unit.label},
                              {SpectrumFloorDb, 0, ""});
        panel.DrawFrame("Spectrum in dBFS, Hann window");
        std::vector<Spot> line;
        for (std::size_t band = 0; band < spectrum.power.size(); ++band) {
            line.push_back({spectrum.FrequencyOf(band) * rate / unit.size,
                            spectrum.LevelOf(spectrum.power[band])});
        }
        panel.Line(line, Ink::Trace);
    }

    void DrawConstellation() {
        Panel panel = PanelAt(m_layout.constellation, {-1, 1, "I"}, {-1, 1, ""});
        panel.DrawFrame("Q over I");
        DrawCells(panel, m_content.path, PathCells, Ink::Path);
        DrawCells(panel, m_content.points, PointCells, Ink::Trace);
    }

    // Neighbours in a row as one area.
    static void DrawCells(Panel& panel, const std::vector<std::uint8_t>& cells, std::size_t side,
                          Ink ink) {
        const double cell = 2.0 / static_cast<double>(side);
        for (std::size_t row = 0; row < side; ++row) {
            const auto begin = cells.begin() + static_cast<std::ptrdiff_t>(row * side);
            const auto end = begin + static_cast<std::ptrdiff_t>(side);
            const double y = 1 - static_cast<double>(row) * cell;
            for (auto from = std::find(begin, end, 1); from != end;) {
                const auto to = std::find(from, end, 0);
                panel.Fill({-1 + static_cast<double>(from - begin) * cell, y},
                           {-1 + static_cast<double>(to - begin) * cell, y - cell}, ink);
                from = std::find(to, end, 1);
            }
        }
    }

    void DrawCcdf() {
        const analysis::Ccdf& ccdf = m_content.ccdf;
        const double end =
            std::max(10.0, analysis::Ccdf::StepDb * static_cast<double>(ccdf.shares.size()));
        Panel panel = PanelAt(m_layout.ccdf, {0, end, "dB above the mean"}, {CcdfFloor, 0, ""});
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
    const SheetContent& m_content;
    const SheetView& m_view;
    SheetLayout m_layout;
    Canvas& m_canvas;
};

}  // namespace

SheetContent ContentOf(const analysis::Signal& signal) {
    SheetContent content;
    content.spectrum = analysis::SpectrumOf(signal);
    content.ccdf = analysis::CcdfOf(signal);
    content.points = CellsOfPoints(signal, PointCells);
    content.path = CellsOfPath(signal, PathCells);
    return content;
}

void DrawSheet(const PlotSubject& subject, const SheetContent& content, const SheetView& view,
               Canvas& canvas) {
    SheetDrawing(subject, content, view, canvas).Draw();
}

double TimeShareAt(const SheetView& view, double x) noexcept {
    const PanelPlace place = SheetLayout::Of(view).time;
    return std::clamp((x - place.leftTop.x) / (place.rightBottom.x - place.leftTop.x), 0.0, 1.0);
}

}  // namespace krv::plots
