// SampleSource: where the check step takes its values from, block by block: loaded values of a
// file, or the cells of a range. One thread; the values' owner outlives the source.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "common/Value.h"
#include "common/memory/SampleBuffer.h"
#include "ports/office/Excel.h"
#include "waveform/data/Channel.h"

namespace krv::waveform {

class SampleSource {
 public:
    static constexpr std::size_t BlockSize = 4096;

    virtual ~SampleSource() = default;
    [[nodiscard]] virtual std::size_t Count() const noexcept = 0;
    // The block of values from `first` on, valid until the next call. It ends in front of a value
    // that isn't a number, and is then shorter than BlockLength.
    [[nodiscard]] virtual std::span<const double> Block(std::size_t first) = 0;
    // The sentence that says where a value stands.
    [[nodiscard]] virtual std::string PlaceOf(std::size_t index) = 0;

    [[nodiscard]] std::size_t BlockLength(std::size_t first) const noexcept {
        return std::min(BlockSize, Count() - first);
    }
};

// Values that are in memory already. Places are counted from 1.
class LoadedValues final : public SampleSource {
 public:
    explicit LoadedValues(std::span<const double> values) noexcept : m_values(values) {}
    [[nodiscard]] std::size_t Count() const noexcept override { return m_values.size(); }
    [[nodiscard]] std::span<const double> Block(std::size_t first) override;
    [[nodiscard]] std::string PlaceOf(std::size_t index) override;

 private:
    std::span<const double> m_values;
};

// 16-bit values that are in memory already, one block of them as doubles at a time. Places are
// counted from 1.
class LoadedInternalValues final : public SampleSource {
 public:
    // Only the first `count` values count.
    LoadedInternalValues(const InternalValues& values, std::size_t count)
        : m_codes(values.codes.Span().first(count)), m_isUnsigned(values.isUnsigned) {}
    [[nodiscard]] std::size_t Count() const noexcept override { return m_codes.size(); }
    [[nodiscard]] std::span<const double> Block(std::size_t first) override;
    [[nodiscard]] std::string PlaceOf(std::size_t index) override;

 private:
    std::span<const std::int16_t> m_codes;
    bool m_isUnsigned;
    std::array<double, BlockSize> m_values;
};

// Cells, read in slabs of one block. Only integer, long, single and double cells are numbers. Cells
// that will be gone through twice are kept as doubles, so that both passes see the same values and
// the application is asked once. Reading throws the application's Error.
class CellValues final : public SampleSource {
 public:
    enum class Passes { One, Two };

    // Throws Error 91 when there is no range and std::bad_alloc.
    CellValues(std::shared_ptr<ports::Range> range, std::size_t count, Passes passes);
    [[nodiscard]] std::size_t Count() const noexcept override { return m_count; }
    [[nodiscard]] std::span<const double> Block(std::size_t first) override;
    [[nodiscard]] std::string PlaceOf(std::size_t index) override;

 private:
    // How many of the cells from `first` on are numbers before one isn't.
    std::size_t Read(std::size_t first, std::span<double> values);

    std::shared_ptr<ports::Range> m_range;
    std::size_t m_count;
    std::vector<Value> m_slab;
    // Everything read so far, or only the latest block.
    SampleBuffer<double> m_values;
    bool m_keeps;
    std::size_t m_keptCount = 0;
};

}  // namespace krv::waveform
