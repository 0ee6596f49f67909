#include "waveform/checks/SampleSource.h"

#include <utility>
#include <variant>

#include "common/Error.h"

namespace krv::waveform {
namespace {

template <class T>
constexpr bool IsNumberKind = std::is_same_v<T, std::int16_t> || std::is_same_v<T, std::int32_t> ||
                              std::is_same_v<T, float> || std::is_same_v<T, double>;

bool StoreNumber(const Value& cell, double& number) {
    return std::visit(
        [&number](const auto& value) {
            constexpr bool isNumber = IsNumberKind<std::decay_t<decltype(value)>>;
            if constexpr (isNumber) {
                number = static_cast<double>(value);
            }
            return isNumber;
        },
        cell);
}

std::string PointText(std::size_t index) {
    return "Invalid data at point " + std::to_string(index + 1);
}

}  // namespace

std::span<const double> LoadedValues::Block(std::size_t first) {
    return m_values.subspan(first, BlockLength(first));
}

std::string LoadedValues::PlaceOf(std::size_t index) {
    return PointText(index);
}

std::span<const double> LoadedInternalValues::Block(std::size_t first) {
    const auto codes = m_codes.subspan(first, BlockLength(first));
    const auto values = std::span(m_values).first(codes.size());
    if (m_isUnsigned) {
        std::ranges::transform(codes, values.begin(),
                               [](std::int16_t code) { return static_cast<std::uint16_t>(code); });
    } else {
        std::ranges::copy(codes, values.begin());
    }
    return values;
}

std::string LoadedInternalValues::PlaceOf(std::size_t index) {
    return PointText(index);
}

CellValues::CellValues(std::shared_ptr<ports::Range> range, std::size_t count, Passes passes)
    : m_range(std::move(range)),
      m_count(count),
      m_slab(std::min(count, BlockSize)),
      m_values(passes == Passes::Two ? count : m_slab.size()),
      m_keeps(passes == Passes::Two) {
    if (!m_range) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    m_values.Resize(m_keeps ? count : m_slab.size());
}

std::span<const double> CellValues::Block(std::size_t first) {
    const std::size_t length = BlockLength(first);
    const auto block = m_values.Span().subspan(m_keeps ? first : 0, length);
    if (m_keeps && first + length <= m_keptCount) {
        return block;
    }
    const std::size_t numbers = Read(first, block);
    m_keptCount = first + numbers;
    return block.first(numbers);
}

std::size_t CellValues::Read(std::size_t first, std::span<double> values) {
    const auto cells = std::span(m_slab).first(values.size());
    m_range->ReadValues(first, cells);
    std::size_t numbers = 0;
    while (numbers < cells.size() && StoreNumber(cells[numbers], values[numbers])) {
        ++numbers;
    }
    return numbers;
}

std::string CellValues::PlaceOf(std::size_t index) {
    return "Invalid data cell at:  " + m_range->CellAddress(index);
}

}  // namespace krv::waveform
