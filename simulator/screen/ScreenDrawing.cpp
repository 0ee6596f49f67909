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
constexpr Color Trace{0, 84, 140};
constexpr Color Alarm{176, 24, 32};

constexpr ScreenArea Heading{0, 0, ScreenSize::Width, 24};
constexpr ScreenArea Footing{0, 296, ScreenSize::Width, 24};
constexpr ScreenArea Keys{520, 28, 116, 264};
constexpr ScreenArea Plot{12, 176, 496, 112};

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

class ScreenPainter {
 public:
    explicit ScreenPainter(const ScreenContent& content) : m_content(content) {}

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
    void PaintTrace();
    void PaintKeys();
    void PaintFooting();

    const ScreenContent& m_content;
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
    PaintMark(100, m_content.isPlaying ? "I/Q ON" : "I/Q OFF", m_content.isPlaying);
    PaintMark(188, "ERR", m_content.errorCount != 0);
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
    const std::string used = std::to_string(m_content.usedPoints) + " points used";
    m_canvas.Text(508 - TextWidth(used, 1), 126, used, 1, Ink);
    m_canvas.Text(12, 162, m_content.isPlaying ? "Playing" : "Stopped", 1, Ink);
    m_canvas.Frame(Plot, Shade);
    m_canvas.Fill({Plot.left, Plot.top + Plot.height / 2, Plot.width, 1}, Shade);
    if (!m_content.codes.empty()) {
        const std::string points = std::to_string(m_content.waveformPoints) + " points";
        m_canvas.Text(508 - TextWidth(points, 1), 162, points, 1, Ink);
        PaintTrace();
    }
}

// The I codes between their least and their greatest; each column shows one of the codes that fall
// into it.
void ScreenPainter::PaintTrace() {
    const std::size_t stride = m_content.codesPerPoint;
    const std::size_t points = (m_content.codes.size() + stride - 1) / stride;
    const int columns = Plot.width - 4;
    std::vector<int> shown;
    for (int column = 0; column < columns; ++column) {
        const std::size_t point =
            static_cast<std::size_t>(column) * points / static_cast<std::size_t>(columns);
        shown.push_back(m_content.codes[point * stride]);
    }
    const auto [least, greatest] = std::minmax_element(shown.begin(), shown.end());
    const int range = std::max(1, *greatest - *least);
    const int low = *least;
    int before = -1;
    for (int column = 0; column < columns; ++column) {
        const int rise =
            (shown[static_cast<std::size_t>(column)] - low) * (Plot.height - 14) / range;
        const int y = Plot.top + Plot.height - 8 - rise;
        const int from = before < 0 ? y : std::min(before, y);
        const int to = before < 0 ? y : std::max(before, y);
        m_canvas.Fill({Plot.left + 2 + column, from, 1, to - from + 1}, Trace);
        before = y;
    }
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
