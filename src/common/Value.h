// Value: what crosses cells and other automation edges. It holds one of the kinds that these can
// meet and keeps them apart, since rules ask what kind a cell's value is.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace krv {

struct EmptyValue {
    friend bool operator==(EmptyValue, EmptyValue) noexcept { return true; }
};
struct NullValue {
    friend bool operator==(NullValue, NullValue) noexcept { return true; }
};
// Days since 1899-12-30, the host applications' date number.
struct DateValue {
    double days = 0;
    friend bool operator==(DateValue, DateValue) noexcept = default;
};
// Currency as a count of ten-thousandths.
struct CurrencyValue {
    std::int64_t tenThousandths = 0;
    friend bool operator==(CurrencyValue, CurrencyValue) noexcept = default;
};
// A cell's error, e.g. 2007 for division by zero.
struct ErrorCodeValue {
    std::int32_t code = 0;
    friend bool operator==(ErrorCodeValue, ErrorCodeValue) noexcept = default;
};

// Integer is 16-bit, Long 32-bit, Single and Double the floating-point kinds of automation.
using Value = std::variant<EmptyValue, NullValue, bool, std::int16_t, std::int32_t, float, double,
                           CurrencyValue, DateValue, ErrorCodeValue, std::string>;

}  // namespace krv
