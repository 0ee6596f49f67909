#include "simulator/screen/ScreenDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "simulator/screen/ScreenCanvas.h"

namespace krv::simulator {
namespace {

using suite::picture::Color;

constexpr Color Paper{222, 229, 216};
constexpr Color Ink{20, 30, 44};
constexpr Color Shade{176, 188, 174};
constexpr Color ITrace{0, 84, 140};
constexpr Color QTrace{196, 92, 0};
constexpr Color MarkerTrace{64, 120, 52};
constexpr Color Alarm{176, 24, 32};

constexpr ScreenArea Heading{0, 0, ScreenSize::Width, 24};
constexpr ScreenArea Footing{0, 296, ScreenSize::Width, 24};
constexpr ScreenArea Keys{520, 28, 116, 264};
constexpr ScreenArea Plot{12, 176, 496, 112};
// The columns of pixels inside the plot's frame.
constexpr int Columns = Plot.width - 4;
// The height of a marker's row; the rows lie in the plot below the traces.
constexpr int MarkerRow = 4;
constexpr int MarkerCount = 4;
constexpr int MarkerBits = (1 << MarkerCount) - 1;
constexpr int MarkersTop = Plot.top + Plot.height - MarkerCount * MarkerRow - 1;
constexpr int TracesTop = Plot.top + 6;
constexpr int TracesHeight = MarkersTop - 5 - TracesTop;

// Digits in groups of three behind the decimal point, as front panels show them.
std::string FrequencyText(double hertz) {
    const auto whole = std::llround(hertz);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%lld.%03lld %03lld MHz", whole / 1000000,
                  whole / 1000 % 1000, whole % 1000);
    return text.data();
}

std::string LevelText(double dbm) {
    const auto hundredths = std::llround(std::fabs(dbm) * 100);
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%s%lld.%02lld dBm",
                  dbm < 0 && hundredths != 0 ? "-" : "", hundredths / 100, hundredths % 100);
    return text.data();
}

// The code of the point at the beginning of each column; ends where the trace does.
std::vector<int> CodesOfColumns(const ScreenTrace& trace, std::uint64_t points) {
    std::vector<int> codes;
    for (std::uint64_t column = 0; column < Columns; ++column) {
        const auto at = static_cast<std::size_t>(column * points / Columns) * trace.stride;
        if (at >= trace.codes.size()) {
            break;
        }
        codes.push_back(trace.codes[at]);
    }
    return codes;
}

// All marker bits that the points of each column have: a pulse may be shorter than a column.
std::vector<int> MarkersOfColumns(const ScreenTrace& markers, std::uint64_t points) {
    std::vector<int> bits(Columns, 0);
    const std::uint64_t count = std::min<std::uint64_t>(markers.codes.size(), points);
    for (std::uint64_t point = 0; point < count; ++point) {
        bits[static_cast<std::size_t>(point * Columns / points)] |=
            markers.codes[static_cast<std::size_t>(point)] & MarkerBits;
    }
    return bits;
}

// "1 3" for the first and the third marker.
std::string MarkerNumbers(int bits) {
    std::string numbers;
    for (int marker = 0; marker < MarkerCount; ++marker) {
        if ((bits >> marker & 1) != 0) {
            numbers += (numbers.empty() ? "" : " ") + std::to_string(marker + 1);
        }
    }
    return numbers;
}

class ScreenPainter {
 public:
    explicit ScreenPainter(const ScreenContent& content)
        : m_content(content), m_markers(MarkersOfColumns(content.markers, content.waveformPoints)) {
        for (const int bits : m_markers) {
            m_markerBits |= bits;
        }
    }

    suite::picture::Picture Paint() {
        PaintHeading();
        PaintOutput();
        PaintWaveform();
        PaintKeys();
        PaintFooting();
        return m_canvas.Take();
    }

 private:
    void PaintHeading();
    void PaintOutput();
    void PaintMark(int left, const std::string& text, bool isOn);
    void PaintWaveform();
    void PaintTraces();
    void PaintTrace(const std::vector<int>& codes, int least, int greatest, Color color);
    void PaintMarkers();
    int PaintLegend(int left, const std::string& text, Color color);
    void PaintKeys();
    void PaintFooting();

    const ScreenContent& m_content;
    // The bits of each column of the plot, and of them all.
    std::vector<int> m_markers;
    int m_markerBits = 0;
    ScreenCanvas m_canvas{ScreenSize::Width, ScreenSize::Height, Paper};
};

void ScreenPainter::PaintHeading() {
    m_canvas.Fill(Heading, Ink);
    m_canvas.Text(12, 5, m_content.model, 2, Paper);
    m_canvas.Text(160, 9, m_content.serialNumber + "  " + m_content.firmware, 1, Shade);
    const std::string operation = m_content.isRemote ? "REMOTE" : "LOCAL";
    m_canvas.Text(ScreenSize::Width - 12 - TextWidth(operation, 2), 5, operation, 2, Paper);
}

void ScreenPainter::PaintOutput() {
    m_canvas.Text(12, 36, "FREQUENCY", 1, Ink);
    m_canvas.Text(12, 50, FrequencyText(m_content.frequencyHz), 3, Ink);
    m_canvas.Text(330, 36, "AMPLITUDE", 1, Ink);
    m_canvas.Text(330, 50, LevelText(m_content.levelDbm), 3, Ink);
    PaintMark(12, m_content.isOutputOn ? "RF ON" : "RF OFF", m_content.isOutputOn);
    PaintMark(100, m_content.isPlaying ? "MOD ON" : "MOD OFF", m_content.isPlaying);
    const bool marks = m_content.isPlaying && m_markerBits != 0;
    PaintMark(188, "MKR " + (marks ? MarkerNumbers(m_markerBits) : "OFF"), marks);
    PaintMark(276, "ERR", m_content.errorCount != 0);
    m_canvas.Fill({12, 116, 496, 1}, Shade);
}

// A mark for what is on is filled.
void ScreenPainter::PaintMark(int left, const std::string& text, bool isOn) {
    const ScreenArea area{left, 86, 76, 20};
    if (isOn) {
        m_canvas.Fill(area, Ink);
    } else {
        m_canvas.Frame(area, Shade);
    }
    m_canvas.TextCentred(area, text, 1, isOn ? Paper : Ink);
}

void ScreenPainter::PaintWaveform() {
    const std::string& name = m_content.waveformName;
    m_canvas.Text(12, 126, "ARB WAVEFORM", 1, Ink);
    m_canvas.Text(12, 140, name.empty() ? "(none selected)" : name, 2, Ink);
    const std::string memory = "Memory: " + std::to_string(m_content.usedPoints) +
                               " points used, " + std::to_string(m_content.freePoints) + " free";
    m_canvas.Text(508 - TextWidth(memory, 1), 126, memory, 1, Ink);
    m_canvas.Text(12, 162, m_content.isPlaying ? "Playing" : "Stopped", 1, Ink);
    m_canvas.Frame(Plot, Shade);
    m_canvas.Fill({Plot.left, TracesTop + TracesHeight / 2, Plot.width, 1}, Shade);
    if (!m_content.i.codes.empty()) {
        const std::string points = std::to_string(m_content.waveformPoints) + " points";
        m_canvas.Text(508 - TextWidth(points, 1), 162, points, 1, Ink);
        PaintTraces();
    }
}

// I and Q to the same scale, between the least and the greatest code of both.
void ScreenPainter::PaintTraces() {
    const std::vector<int> i = CodesOfColumns(m_content.i, m_content.waveformPoints);
    const std::vector<int> q = CodesOfColumns(m_content.q, m_content.waveformPoints);
    std::vector<int> both = i;
    both.insert(both.end(), q.begin(), q.end());
    const auto [least, greatest] = std::minmax_element(both.begin(), both.end());
    int left = PaintLegend(160, "I", ITrace);
    if (!q.empty()) {
        left = PaintLegend(left, "Q", QTrace);
        PaintTrace(q, *least, *greatest, QTrace);
    }
    PaintTrace(i, *least, *greatest, ITrace);
    if (m_markerBits != 0) {
        PaintLegend(left, "Markers " + MarkerNumbers(m_markerBits), MarkerTrace);
        PaintMarkers();
    }
}

void ScreenPainter::PaintTrace(const std::vector<int>& codes, int least, int greatest,
                               Color color) {
    const int range = std::max(1, greatest - least);
    int before = -1;
    int column = Plot.left + 2;
    for (const int code : codes) {
        const int y = TracesTop + TracesHeight - (code - least) * TracesHeight / range;
        const int from = before < 0 ? y : std::min(before, y);
        const int to = before < 0 ? y : std::max(before, y);
        m_canvas.Fill({column++, from, 1, to - from + 1}, color);
        before = y;
    }
}

// A row for each marker, the first at the top.
void ScreenPainter::PaintMarkers() {
    for (int column = 0; column < Columns; ++column) {
        for (int marker = 0; marker < MarkerCount; ++marker) {
            if ((m_markers[static_cast<std::size_t>(column)] >> marker & 1) != 0) {
                m_canvas.Fill(
                    {Plot.left + 2 + column, MarkersTop + marker * MarkerRow, 1, MarkerRow - 1},
                    MarkerTrace);
            }
        }
    }
}

// Returns where the next one begins.
int ScreenPainter::PaintLegend(int left, const std::string& text, Color color) {
    m_canvas.Fill({left, 165, 14, 2}, color);
    m_canvas.Text(left + 20, 162, text, 1, Ink);
    return left + 36 + TextWidth(text, 1);
}

void ScreenPainter::PaintKeys() {
    constexpr std::array<std::array<const char*, 2>, 6> Labels{{{"Frequency", ""},
                                                                {"Amplitude", ""},
                                                                {"RF", "Off On"},
                                                                {"Select", "Waveform"},
                                                                {"Arb", "Off On"},
                                                                {"Error", "Info"}}};
    const int height = Keys.height / static_cast<int>(Labels.size());
    int top = Keys.top;
    for (const auto& [first, second] : Labels) {
        const ScreenArea key{Keys.left, top, Keys.width, height - 4};
        m_canvas.Fill(key, Shade);
        m_canvas.Frame(key, Ink);
        const bool hasTwoLines = *second != '\0';
        m_canvas.TextCentred({key.left, key.top - (hasTwoLines ? 7 : 0), key.width, key.height},
                             first, 1, Ink);
        m_canvas.TextCentred({key.left, key.top + 7, key.width, key.height}, second, 1, Ink);
        top += height;
    }
}

void ScreenPainter::PaintFooting() {
    const bool hasErrors = m_content.errorCount != 0;
    m_canvas.Fill(Footing, hasErrors ? Alarm : Shade);
    std::string text = hasErrors ? m_content.oldestError : "No errors";
    if (m_content.errorCount > 1) {
        text = std::to_string(m_content.errorCount) + " errors, first: " + text;
    }
    m_canvas.Text(12, Footing.top + 9, text, 1, hasErrors ? Paper : Ink);
}

}  // namespace

suite::picture::Picture DrawScreen(const ScreenContent& content) {
    return ScreenPainter(content).Paint();
}

}  // namespace krv::simulator
