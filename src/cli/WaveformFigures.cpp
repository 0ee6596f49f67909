#include "cli/WaveformFigures.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

namespace krv::cli {
namespace {

using FiguresObject = nlohmann::ordered_json;

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
        waveform->i.CopyTo(first, i, factor);
        if (hasQ) {
            waveform->q.CopyTo(first, q, factor);
        } else {
            std::ranges::fill(q, 0.0);
        }
    };
    return signal;
}

FiguresObject FiguresJson(const analysis::Figures& figures) {
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
