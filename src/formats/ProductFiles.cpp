#include "formats/ProductFiles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "common/Numbers.h"

namespace krv::formats {
namespace {

constexpr std::size_t ValuesPerWrite = 16384;
// "-1.2345678901234567e+308" and a line feed.
constexpr std::size_t PaddedBytes = 25;
constexpr double OldFullScale = 8192;
constexpr double NewFullScale = 32768;

// Records of one size, made block by block from values.
class Records final : public ByteStream {
 public:
    using Store = void (*)(std::span<const double> values, std::byte* to);

    Records(ProductValues values, std::size_t recordBytes, Store store)
        : m_source(std::move(values)), m_recordBytes(recordBytes), m_store(store) {}

    std::size_t Read(std::span<std::byte> destination) override {
        std::size_t done = 0;
        while (done < destination.size() && Prepare()) {
            const std::size_t count = std::min(destination.size() - done, m_block.size() - m_at);
            std::copy_n(m_block.data() + m_at, count, destination.data() + done);
            m_at += count;
            done += count;
        }
        return done;
    }

 private:
    // Has bytes ready; false at the end.
    bool Prepare() {
        if (m_at < m_block.size()) {
            return true;
        }
        m_at = 0;
        m_values.resize(static_cast<std::size_t>(
            std::min<std::uint64_t>(m_source.count - m_next, ValuesPerWrite)));
        m_source.copy(m_next, m_values);
        m_next += m_values.size();
        m_block.resize(m_values.size() * m_recordBytes);
        m_store(m_values, m_block.data());
        return !m_block.empty();
    }

    ProductValues m_source;
    std::size_t m_recordBytes;
    Store m_store;
    std::uint64_t m_next = 0;
    std::vector<double> m_values;
    std::vector<std::byte> m_block;
    std::size_t m_at = 0;
};

ProductFile RecordsFile(ProductValues values, std::size_t recordBytes, Records::Store store) {
    const std::uint64_t bytes = values.count * recordBytes;
    return {bytes, [values = std::move(values), recordBytes, store] {
                return std::make_unique<Records>(values, recordBytes, store);
            }};
}

template <bool IsBigEndian>
void StoreWords(std::span<const double> values, std::byte* to) {
    for (const double value : values) {
        const auto bits = static_cast<std::uint16_t>(static_cast<std::int32_t>(value));
        to[IsBigEndian ? 1 : 0] = static_cast<std::byte>(bits & 0xFFU);
        to[IsBigEndian ? 0 : 1] = static_cast<std::byte>(bits >> 8U);
        to += 2;
    }
}

void StoreByte(std::span<const double> values, std::byte* to) {
    std::ranges::transform(values, to, [](double value) {
        return static_cast<std::byte>(static_cast<unsigned>(value));
    });
}

void StorePadded(std::span<const double> values, std::byte* to) {
    for (const double value : values) {
        std::array<char, PaddedBytes> text;
        text.fill(' ');
        std::to_chars(text.data(), text.data() + text.size(), value);
        text.back() = '\n';
        std::ranges::copy(std::as_bytes(std::span(text)), to);
        to += PaddedBytes;
    }
}

void RequireWithinFullScale(const ImportedWaveform& waveform) {
    if (waveform.IsBeyondFullScale()) {
        throw Error(ErrorNumber::Overflow,
                    "The largest magnitude is " + NumberToText(waveform.peak) +
                        ", and full scale is " + NumberToText(waveform.fullScale) +
                        ". Nothing is clipped: --normalize brings the largest one to full scale, "
                        "--scale PERCENT to a part of it.");
    }
}

const Samples& ChannelOf(const ImportedWaveform& waveform, ProductChannel channel) {
    return channel == ProductChannel::I ? waveform.i : waveform.q;
}

// Also for a channel that isn't there.
void CopyChannel(const Samples& samples, std::uint64_t first, std::span<double> values) {
    if (samples.Size() == 0) {
        std::ranges::fill(values, 0.0);
    } else {
        samples.CopyTo(static_cast<std::size_t>(first), values);
    }
}

}  // namespace

ProductValues NumbersOf(const SharedWaveform& waveform, ProductChannel channel) {
    const std::uint64_t points = waveform->Points();
    if (channel == ProductChannel::Markers) {
        return {waveform->markers.Size(),
                [waveform](std::uint64_t first, std::span<double> values) {
                    std::copy_n(waveform->markers.Data() + first, values.size(), values.begin());
                }};
    }
    return {points, [waveform, channel](std::uint64_t first, std::span<double> values) {
                CopyChannel(ChannelOf(*waveform, channel), first, values);
            }};
}

ProductValues Codes16Of(const SharedWaveform& waveform) {
    RequireWithinFullScale(*waveform);
    const double factor = NewFullScale / waveform->fullScale;
    return {
        2 * std::uint64_t{waveform->Points()},
        [waveform, factor](std::uint64_t first, std::span<double> values) {
            const bool hasQ = waveform->HasQ();
            for (std::size_t k = 0; k < values.size(); ++k) {
                const std::uint64_t place = first + k;
                const auto point = static_cast<std::size_t>(place / 2);
                const bool isQ = place % 2 != 0;
                const double value = !isQ ? waveform->i[point] : hasQ ? waveform->q[point] : 0.0;
                values[k] = std::min(RoundHalfEven(value * factor), NewFullScale - 1);
            }
        }};
}

ProductValues Codes14Of(const SharedWaveform& waveform, ProductChannel channel) {
    RequireWithinFullScale(*waveform);
    const double factor = OldFullScale / waveform->fullScale;
    return {waveform->Points(),
            [waveform, channel, factor](std::uint64_t first, std::span<double> values) {
                CopyChannel(ChannelOf(*waveform, channel), first, values);
                for (double& value : values) {
                    value =
                        std::min(RoundHalfEven(value * factor), OldFullScale - 1) + OldFullScale;
                }
            }};
}

ProductFile AsWords(ProductValues values, bool isBigEndian) {
    return RecordsFile(std::move(values), 2, isBigEndian ? StoreWords<true> : StoreWords<false>);
}

ProductFile AsMarkerBytes(ProductValues values) {
    // What lies behind the markers is never looked at.
    const std::uint64_t count = values.count;
    const auto copy = [count, inner = std::move(values.copy)](std::uint64_t first,
                                                              std::span<double> block) {
        const auto held = static_cast<std::size_t>(
            std::min<std::uint64_t>(count - std::min(count, first), block.size()));
        inner(first, block.first(held));
        std::ranges::fill(block.subspan(held), 0.0);
    };
    return RecordsFile({2 * count, copy}, 1, StoreByte);
}

ProductFile AsPaddedText(ProductValues values) {
    return RecordsFile(std::move(values), PaddedBytes, StorePadded);
}

void WriteAsText(const ProductValues& values, std::ostream& out) {
    std::vector<double> block;
    std::string text;
    for (std::uint64_t at = 0; at < values.count; at += block.size()) {
        block.resize(
            static_cast<std::size_t>(std::min<std::uint64_t>(values.count - at, ValuesPerWrite)));
        values.copy(at, block);
        text.clear();
        for (const double value : block) {
            std::array<char, PaddedBytes> digits;
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
            text.append(digits.data(), end);
            text += '\n';
        }
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
}

void WriteProductFile(const ProductFile& file, std::ostream& out) {
    const auto stream = file.open();
    std::vector<char> block(std::size_t{256} << 10U);
    for (std::uint64_t at = 0; at < file.bytes;) {
        const std::size_t count = stream->Read(std::as_writable_bytes(std::span(block)));
        out.write(block.data(), static_cast<std::streamsize>(count));
        at += count;
    }
}

}  // namespace krv::formats
