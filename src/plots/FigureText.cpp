#include "plots/FigureText.h"

#include <array>
#include <cmath>
#include <optional>

#include "common/Numbers.h"

namespace krv::plots {
namespace {

using analysis::Measures;

// With so many decimals at most.
std::string Rounded(double value, int decimals) {
    return NumberToText(RoundDecimals(value, decimals));
}

std::string Decibels(double ratio) {
    return ratio > 0 ? Rounded(20 * std::log10(ratio), 2) : "-infinity";
}

struct UnitPrefix {
    double size;
    const char* text;
};

// "133.5 kHz", "1 ms".
std::string WithUnit(double value, const char* unit) {
    static constexpr std::array<UnitPrefix, 7> Prefixes{
        {{1e9, "G"}, {1e6, "M"}, {1e3, "k"}, {1, ""}, {1e-3, "m"}, {1e-6, "u"}, {1e-9, "n"}}};
    const UnitPrefix* prefix = &Prefixes.back();
    for (const UnitPrefix& each : Prefixes) {
        if (value >= each.size) {
            prefix = &each;
            break;
        }
    }
    return Rounded(value / prefix->size, 3) + ' ' + prefix->text + unit;
}

// Of full scale.
std::string LevelLines(const Measures& measures) {
    std::string text = "Peak:         " + Decibels(measures.peak) +
                       " dBFS; the largest value of I or Q is " + Rounded(measures.peakValue, 6) +
                       " of full scale\nRMS:          " + Decibels(measures.rms) + " dBFS\n";
    if (measures.papr) {
        text += "PAPR:         " + Rounded(*measures.papr, 2) +
                " dB of the envelope, 3.01 dB more at the carrier\n";
    }
    return text + "Mean:         " + Rounded(measures.meanI, 6) + " of I, " +
           Rounded(measures.meanQ, 6) + " of Q\n";
}

std::string CodeLines(const Measures& measures) {
    std::string text = "Clipped:      ";
    text += measures.clipped == 0
                ? "no point at full scale\n"
                : std::to_string(measures.clipped) + " points at full scale, " +
                      std::to_string(measures.longestClip) + " of them in a row\n";
    if (measures.codes) {
        text += "Codes:        " + std::to_string(measures.codes->smallest) + " to " +
                std::to_string(measures.codes->largest);
        if (measures.codes->different) {
            text += ", " + std::to_string(*measures.codes->different) + " different ones";
        }
        text += '\n';
    }
    return text;
}

std::string RepetitionLine(const Measures& measures) {
    std::string text = "Repetition:   the step from the last point to the first is " +
                       Rounded(measures.wrapStep, 6) + " of full scale";
    if (measures.rms > 0) {
        text += ", " + Decibels(measures.wrapStep / measures.rms) + " dB of the RMS";
    }
    return text + "; the largest other step is " + Rounded(measures.largestStep, 6) + '\n';
}

}  // namespace

std::string FiguresAsText(const analysis::Figures& figures) {
    std::string text = "Points:       " + std::to_string(figures.points) + '\n';
    const std::optional<double> rate = figures.sampleRate;
    if (rate) {
        text += "Duration:     " + WithUnit(static_cast<double>(figures.points) / *rate, "s") +
                " at " + WithUnit(*rate, "Hz") + '\n';
    }
    const Measures& measures = figures.measures;
    text += LevelLines(measures) + CodeLines(measures) + RepetitionLine(measures);
    if (measures.gainImbalance && measures.quadratureError) {
        text += "I/Q balance:  I is " + Rounded(*measures.gainImbalance, 3) + " dB above Q, " +
                Rounded(*measures.quadratureError, 3) + " degrees from a right angle\n";
    }
    const std::string width = rate ? WithUnit(figures.occupiedShare * *rate, "Hz")
                                   : Rounded(figures.occupiedShare, 6) + " of the sample rate";
    return text + "Bandwidth:    " + width + " hold 99 % of the power\n";
}

}  // namespace krv::plots
