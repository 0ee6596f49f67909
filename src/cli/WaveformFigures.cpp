#include "cli/WaveformFigures.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <utility>

#include "analysis/Spectrum.h"
#include "common/Numbers.h"

namespace krv::cli {
namespace {

using FiguresObject = nlohmann::ordered_json;

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
void PrintLevels(const analysis::Measures& measures, std::ostream& out) {
    out << "Peak:         " << Decibels(measures.peak) << " dBFS; the largest value of I or Q is "
        << Rounded(measures.peakValue, 6) << " of full scale\n"
        << "RMS:          " << Decibels(measures.rms) << " dBFS\n";
    if (measures.papr) {
        out << "PAPR:         " << Rounded(*measures.papr, 2)
            << " dB of the envelope, 3.01 dB more at the carrier\n";
    }
    out << "Mean:         " << Rounded(measures.meanI, 6) << " of I, " << Rounded(measures.meanQ, 6)
        << " of Q\n";
}

void PrintCodes(const analysis::Measures& measures, std::ostream& out) {
    out << "Clipped:      ";
    if (measures.clipped == 0) {
        out << "no point at full scale\n";
    } else {
        out << measures.clipped << " points at full scale, " << measures.longestClip
            << " of them in a row\n";
    }
    if (measures.codes) {
        out << "Codes:        " << measures.codes->smallest << " to " << measures.codes->largest;
        if (measures.codes->different) {
            out << ", " << *measures.codes->different << " different ones";
        }
        out << '\n';
    }
}

void PrintRepetition(const analysis::Measures& measures, std::ostream& out) {
    out << "Repetition:   the step from the last point to the first is "
        << Rounded(measures.wrapStep, 6) << " of full scale";
    if (measures.rms > 0) {
        out << ", " << Decibels(measures.wrapStep / measures.rms) << " dB of the RMS";
    }
    out << "; the largest other step is " << Rounded(measures.largestStep, 6) << '\n';
}

template <class T>
FiguresObject NullOr(const std::optional<T>& value) {
    return value ? FiguresObject(*value) : FiguresObject(nullptr);
}

}  // namespace

analysis::Signal SignalOf(std::shared_ptr<const formats::ImportedWaveform> waveform) {
    analysis::Signal signal;
    signal.points = waveform->Points();
    signal.hasQ = waveform->HasQ();
    signal.sampleRate = waveform->sampleRate;
    signal.fullScaleCode = waveform->isInteger && waveform->fullScale > 1 ? waveform->fullScale : 0;
    const double factor = 1 / waveform->fullScale;
    const bool hasQ = signal.hasQ;
    signal.copy = [waveform = std::move(waveform), factor, hasQ](
                      std::size_t first, std::span<double> i, std::span<double> q) {
        waveform->i.CopyTo(first, i);
        if (hasQ) {
            waveform->q.CopyTo(first, q);
        }
        for (std::size_t k = 0; k < i.size(); ++k) {
            i[k] *= factor;
            q[k] = hasQ ? q[k] * factor : 0;
        }
    };
    return signal;
}

WaveformFigures FiguresOf(const analysis::Signal& signal) {
    return {signal.points, signal.sampleRate, analysis::Measure(signal),
            analysis::OccupiedBandwidth(analysis::SpectrumOf(signal))};
}

void PrintFigures(const WaveformFigures& figures, std::ostream& out) {
    out << "Points:       " << figures.points << '\n';
    if (figures.sampleRate) {
        out << "Duration:     "
            << WithUnit(static_cast<double>(figures.points) / *figures.sampleRate, "s") << " at "
            << WithUnit(*figures.sampleRate, "Hz") << '\n';
    }
    const analysis::Measures& measures = figures.measures;
    PrintLevels(measures, out);
    PrintCodes(measures, out);
    PrintRepetition(measures, out);
    if (measures.gainImbalance && measures.quadratureError) {
        out << "I/Q balance:  I is " << Rounded(*measures.gainImbalance, 3) << " dB above Q, "
            << Rounded(*measures.quadratureError, 3) << " degrees from a right angle\n";
    }
    out << "Bandwidth:    "
        << (figures.sampleRate ? WithUnit(figures.occupiedShare * *figures.sampleRate, "Hz")
                               : Rounded(figures.occupiedShare, 6) + " of the sample rate")
        << " hold 99 % of the power\n";
}

FiguresObject FiguresJson(const WaveformFigures& figures) {
    const analysis::Measures& measures = figures.measures;
    FiguresObject codes = nullptr;
    if (measures.codes) {
        codes = {{"minimum", measures.codes->smallest},
                 {"maximum", measures.codes->largest},
                 {"different", NullOr(measures.codes->different)}};
    }
    std::optional<double> seconds;
    std::optional<double> hertz;
    if (figures.sampleRate) {
        seconds = static_cast<double>(figures.points) / *figures.sampleRate;
        hertz = figures.occupiedShare * *figures.sampleRate;
    }
    return {{"points", figures.points},
            {"sampleRate", NullOr(figures.sampleRate)},
            {"durationSeconds", NullOr(seconds)},
            {"peak", measures.peak},
            {"peakValue", measures.peakValue},
            {"rms", measures.rms},
            {"paprDb", NullOr(measures.papr)},
            {"mean", {{"i", measures.meanI}, {"q", measures.meanQ}}},
            {"clipped", measures.clipped},
            {"longestClip", measures.longestClip},
            {"codes", codes},
            {"wrapStep", measures.wrapStep},
            {"largestStep", measures.largestStep},
            {"gainImbalanceDb", NullOr(measures.gainImbalance)},
            {"quadratureErrorDegrees", NullOr(measures.quadratureError)},
            {"occupiedShare", figures.occupiedShare},
            {"occupiedBandwidthHz", NullOr(hertz)}};
}

}  // namespace krv::cli
