#include "preview/WaveformView.h"

#include <algorithm>
#include <cmath>

#include "plots/FigureText.h"
#include "plots/PixelCanvas.h"
#include "preview/CodeSignal.h"

namespace krv::preview {
namespace {

// Fewer points are no picture of a waveform.
constexpr double LeastPoints = 8;

int UnitsOf(int pixels, double scale) {
    return static_cast<int>(pixels / scale);
}

}  // namespace

WaveformView::WaveformView(const waveform::DacCodes& codes)
    : m_signal(SignalOfCodes(codes)),
      m_markers(MarkersOfCodes(codes, m_signal.points)),
      m_content(plots::ContentOf(m_signal)),
      m_figures(analysis::FiguresOf(m_signal, m_content.spectrum)),
      m_points(m_signal.points) {}

std::string WaveformView::RangeText() const {
    return "points " + std::to_string(m_first) + " to " + std::to_string(m_first + m_points - 1) +
           " of " + std::to_string(m_signal.points);
}

std::string WaveformView::Figures() const {
    return plots::FiguresAsText(m_figures);
}

plots::SheetView WaveformView::SheetFor(PictureSize size) const {
    return {UnitsOf(size.width, size.scale), UnitsOf(size.height, size.scale), m_first, m_points};
}

suite::picture::Picture WaveformView::Draw(PictureSize size, plots::Theme theme) const {
    plots::PixelCanvas canvas(size.width, size.height, size.scale, theme);
    const plots::PlotSubject subject{m_signal, m_markers,
                                     "Wheel, + and -: zoom.  Arrow keys: move.  Home: all points."};
    plots::DrawSheet(subject, m_content, SheetFor(size), canvas);
    return canvas.Pixels();
}

double WaveformView::TimeShareAt(PictureSize size, int x) noexcept {
    const plots::SheetView view{UnitsOf(size.width, size.scale), UnitsOf(size.height, size.scale),
                                0, 0};
    return plots::TimeShareAt(view, x / size.scale);
}

void WaveformView::Zoom(double factor, double share) {
    const auto points = static_cast<double>(m_points);
    const double shown = std::max(points / factor, std::min(LeastPoints, points));
    Show(static_cast<double>(m_first) + share * (points - shown), shown);
}

void WaveformView::Move(double share) {
    const auto points = static_cast<double>(m_points);
    Show(static_cast<double>(m_first) + share * points, points);
}

void WaveformView::ShowAll() {
    m_first = 0;
    m_points = m_signal.points;
}

// As near as the waveform allows.
void WaveformView::Show(double first, double points) {
    const auto all = static_cast<double>(m_signal.points);
    points = std::clamp(std::round(points), 1.0, all);
    m_points = static_cast<std::size_t>(points);
    m_first = static_cast<std::size_t>(std::clamp(std::round(first), 0.0, all - points));
}

}  // namespace krv::preview
