#include "analysis/Figures.h"

namespace krv::analysis {

Figures FiguresOf(const Signal& signal, const Spectrum& spectrum) {
    return {signal.points, signal.sampleRate, Measure(signal), OccupiedBandwidth(spectrum)};
}

Figures FiguresOf(const Signal& signal) {
    return FiguresOf(signal, SpectrumOf(signal));
}

}  // namespace krv::analysis
