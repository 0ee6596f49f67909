#include "waveform/run/InterleaveCodes.h"

#include <algorithm>

namespace krv::waveform {
namespace {

using Codes = SampleBuffer<std::int16_t>;

constexpr std::size_t BlockPoints = std::size_t{64} << 10;

// Work takes the first point of a block and the one behind its last.
template <class Work>
void ForEachBlockFromTheEnd(std::size_t points, const Work& work) {
    for (std::size_t end = points; end > 0;) {
        const std::size_t first = (end - 1) / BlockPoints * BlockPoints;
        work(first, end);
        end = first;
    }
}

void KeepAtMost(Codes& codes, std::size_t count) {
    if (codes.Size() > count) {
        codes.Resize(count);
        codes.TrimToSize();
    }
}

Codes RoomFor(std::size_t count) {
    Codes codes(count);
    codes.Resize(count);
    return codes;
}

}  // namespace

SampleBuffer<std::int16_t> InterleaveCodes(SampleBuffer<std::int16_t>& iCodes,
                                           SampleBuffer<std::int16_t>& qCodes,
                                           std::int16_t zeroCode) {
    Codes interleaved = RoomFor(2 * std::max(iCodes.Size(), qCodes.Size()));
    ForEachBlockFromTheEnd(interleaved.Size() / 2, [&](std::size_t first, std::size_t end) {
        std::int16_t* const out = interleaved.Data();
        const std::int16_t* const i = iCodes.Data();
        const std::int16_t* const q = qCodes.Data();
        const std::size_t pairsEnd = std::clamp(std::min(iCodes.Size(), qCodes.Size()), first, end);
        for (std::size_t point = first; point < pairsEnd; ++point) {
            out[2 * point] = i[point];
            out[2 * point + 1] = q[point];
        }
        for (std::size_t point = pairsEnd; point < end; ++point) {
            out[2 * point] = point < iCodes.Size() ? i[point] : zeroCode;
            out[2 * point + 1] = point < qCodes.Size() ? q[point] : zeroCode;
        }
        KeepAtMost(iCodes, first);
        KeepAtMost(qCodes, first);
    });
    iCodes.Clear();
    qCodes.Clear();
    return interleaved;
}

SeparateCodes SeparateInterleaved(SampleBuffer<std::int16_t>& interleaved, std::size_t iCount,
                                  std::size_t qCount) {
    SeparateCodes codes{RoomFor(iCount), RoomFor(qCount)};
    ForEachBlockFromTheEnd(interleaved.Size() / 2, [&](std::size_t first, std::size_t end) {
        const std::int16_t* const in = interleaved.Data();
        std::int16_t* const i = codes.iCodes.Data();
        std::int16_t* const q = codes.qCodes.Data();
        for (std::size_t point = first; point < std::min(end, iCount); ++point) {
            i[point] = in[2 * point];
        }
        for (std::size_t point = first; point < std::min(end, qCount); ++point) {
            q[point] = in[2 * point + 1];
        }
        KeepAtMost(interleaved, 2 * first);
    });
    interleaved.Clear();
    return codes;
}

}  // namespace krv::waveform
