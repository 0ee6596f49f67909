// ProductFiles: an imported waveform in the files that the download dialog reads: numbers as text,
// 16-bit codes of the new family with I and Q in turn, or 14-bit codes of the old one.
//
// Nothing is rescaled: full scale goes to full scale, and what is beyond it is refused.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <span>

#include "formats/ByteStreams.h"
#include "formats/Import.h"

namespace krv::formats {

enum class ProductChannel : std::uint8_t { I, Q, Markers };

// Values that are made when they are asked for.
struct ProductValues {
    std::uint64_t count = 0;
    // Fills the span with the values from a place on.
    std::function<void(std::uint64_t first, std::span<double> values)> copy;
};

using SharedWaveform = std::shared_ptr<const ImportedWaveform>;

// Where there is no Q, its values are zeros.

// A channel's numbers as the file has them.
[[nodiscard]] ProductValues NumbersOf(const SharedWaveform& waveform, ProductChannel channel);
// Two for each point, I first; full scale is 32768, and 32768 itself becomes 32767. Each throws
// Error 6 for a waveform beyond full scale.
[[nodiscard]] ProductValues Codes16Of(const SharedWaveform& waveform);
// From 0 to 16383 with 8192 as zero, of I or Q.
[[nodiscard]] ProductValues Codes14Of(const SharedWaveform& waveform, ProductChannel channel);

struct ProductFile {
    std::uint64_t bytes = 0;
    std::function<std::unique_ptr<ByteStream>()> open;
};
// 16-bit words; high byte first they are unsigned, as the product has them.
[[nodiscard]] ProductFile AsWords(ProductValues values, bool isBigEndian);
// A byte each, in a file of the size that as many words have.
[[nodiscard]] ProductFile AsMarkerBytes(ProductValues values);
// A number in each line, all of one length.
[[nodiscard]] ProductFile AsPaddedText(ProductValues values);

// A number in each line, as short as it can be without losing a digit.
void WriteAsText(const ProductValues& values, std::ostream& out);
// The bytes of the file.
void WriteProductFile(const ProductFile& file, std::ostream& out);

}  // namespace krv::formats
