// CellColumn: one column of a sheet. Numbers, of which there may be a million, lie side by side in
// an array; everything else is kept beside it by its row. Owned by its sheet.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/Value.h"

namespace krv::bench {

class CellColumn {
 public:
    // Rows from 0; a row that was never set is empty.
    [[nodiscard]] Value At(std::int32_t row) const;
    // Numbers of every kind become doubles, as in any sheet; one that isn't finite becomes the
    // error code of a number that can't be shown.
    void Set(std::int32_t row, const Value& value);
    void SetNumber(std::int32_t row, double number);

    // One past the last row that isn't empty.
    [[nodiscard]] std::int32_t UsedRows() const {
        return static_cast<std::int32_t>(m_numbers.size());
    }

 private:
    void SetOther(std::int32_t row, Value value);
    void Clear(std::int32_t row);
    void Reach(std::int32_t row);

    // A row without a number holds a NaN here, and its value, unless it is empty, in m_others.
    std::vector<double> m_numbers;
    std::unordered_map<std::int32_t, Value> m_others;
};

}  // namespace krv::bench
