#include "waveform/run/InterleaveCodes.h"

#include <algorithm>
#include <span>
#include <utility>

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

// Gives back what lies behind the first codes.
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

// A channel on its way into the interleaved array.
struct Part {
    explicit Part(SharedCodes& channel)
        : codes(channel), values(channel.Span()), own(channel.Exclusive()) {}

    void GiveBackFrom(std::size_t first) const {
        if (own != nullptr) {
            KeepAtMost(*own, first);
        }
    }
    void Finish() const {
        if (own != nullptr) {
            codes = {};
        }
    }

    SharedCodes& codes;
    std::span<const std::int16_t> values;
    Codes* own;
};

}  // namespace

SampleBuffer<std::int16_t> InterleaveCodes(SharedCodes& iCodes, SharedCodes& qCodes,
                                           std::int16_t zeroCode) {
    const Part i(iCodes);
    const Part q(qCodes);
    const std::size_t iCount = i.values.size();
    const std::size_t qCount = q.values.size();
    Codes interleaved = RoomFor(2 * std::max(iCount, qCount));
    ForEachBlockFromTheEnd(interleaved.Size() / 2, [&](std::size_t first, std::size_t end) {
        std::int16_t* const out = interleaved.Data();
        const std::size_t pairsEnd = std::clamp(std::min(iCount, qCount), first, end);
        for (std::size_t point = first; point < pairsEnd; ++point) {
            out[2 * point] = i.values[point];
            out[2 * point + 1] = q.values[point];
        }
        for (std::size_t point = pairsEnd; point < end; ++point) {
            out[2 * point] = point < iCount ? i.values[point] : zeroCode;
            out[2 * point + 1] = point < qCount ? q.values[point] : zeroCode;
        }
        i.GiveBackFrom(first);
        q.GiveBackFrom(first);
    });
    i.Finish();
    q.Finish();
    return interleaved;
}

void SeparateInterleaved(SampleBuffer<std::int16_t>& interleaved, SharedCodes& iCodes,
                         std::size_t iCount, SharedCodes& qCodes, std::size_t qCount) {
    Codes i = RoomFor(iCodes.Empty() ? iCount : 0);
    Codes q = RoomFor(qCodes.Empty() ? qCount : 0);
    ForEachBlockFromTheEnd(interleaved.Size() / 2, [&](std::size_t first, std::size_t end) {
        const std::int16_t* const in = interleaved.Data();
        for (std::size_t point = first; point < std::min(end, i.Size()); ++point) {
            i[point] = in[2 * point];
        }
        for (std::size_t point = first; point < std::min(end, q.Size()); ++point) {
            q[point] = in[2 * point + 1];
        }
        KeepAtMost(interleaved, 2 * first);
    });
    interleaved.Clear();
    if (!i.Empty()) {
        iCodes = SharedCodes(std::move(i));
    }
    if (!q.Empty()) {
        qCodes = SharedCodes(std::move(q));
    }
}

}  // namespace krv::waveform
