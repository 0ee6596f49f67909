#include "bench/book/CellColumn.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "bench/book/CellText.h"

namespace krv::bench {
namespace {

constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

}  // namespace

Value CellColumn::At(std::int32_t row) const {
    const auto index = static_cast<std::size_t>(row);
    if (index >= m_numbers.size()) {
        return EmptyValue{};
    }
    if (!std::isnan(m_numbers[index])) {
        return m_numbers[index];
    }
    const auto other = m_others.find(row);
    return other == m_others.end() ? Value{} : other->second;
}

void CellColumn::Set(std::int32_t row, const Value& value) {
    std::visit(
        [&](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, EmptyValue> || std::is_same_v<Held, NullValue>) {
                Clear(row);
            } else if constexpr (std::is_arithmetic_v<Held> && !std::is_same_v<Held, bool>) {
                SetNumber(row, static_cast<double>(held));
            } else {
                SetOther(row, held);
            }
        },
        value);
}

void CellColumn::SetNumber(std::int32_t row, double number) {
    if (!std::isfinite(number)) {
        SetOther(row, ErrorCodeValue{CellError::Number});
        return;
    }
    Reach(row);
    m_numbers[static_cast<std::size_t>(row)] = number;
    if (!m_others.empty()) {
        m_others.erase(row);
    }
}

void CellColumn::SetOther(std::int32_t row, Value value) {
    Reach(row);
    m_numbers[static_cast<std::size_t>(row)] = NoNumber;
    m_others.insert_or_assign(row, std::move(value));
}

void CellColumn::Clear(std::int32_t row) {
    if (row >= UsedRows()) {
        return;
    }
    m_others.erase(row);
    m_numbers[static_cast<std::size_t>(row)] = NoNumber;
    while (!m_numbers.empty() && std::isnan(m_numbers.back()) &&
           !m_others.contains(UsedRows() - 1)) {
        m_numbers.pop_back();
    }
}

void CellColumn::Reach(std::int32_t row) {
    if (row >= UsedRows()) {
        m_numbers.resize(static_cast<std::size_t>(row) + 1, NoNumber);
    }
}

}  // namespace krv::bench
