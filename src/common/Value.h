// Value: what crosses cells and other automation edges. It holds one of the kinds that these can
// meet and keeps them apart, since rules ask what kind a cell's value is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

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

// A one-dimensional array of bytes.
struct ByteArray {
    std::vector<std::byte> bytes;
    std::int32_t lowerBound = 0;
    friend bool operator==(const ByteArray&, const ByteArray&) = default;
};

// What the elements of an array are, numbered like the alternatives of Value. Only the elements of
// kind Any may differ from each other.
enum class ElementKind : std::uint8_t {
    Boolean = 2,
    Integer,
    Long,
    Single,
    Double,
    Currency,
    Date,
    ErrorCode,
    Text,
    Any = 255
};

struct ArrayDimension {
    std::uint32_t count = 0;
    std::int32_t lowerBound = 0;
    friend bool operator==(const ArrayDimension&, const ArrayDimension&) noexcept = default;
};

struct ArrayElement;

// An array of one or more dimensions. The first index varies fastest, and there are as many
// elements as the product of the counts says. Elements may be arrays again where the kind is Any.
struct ArrayValue {
    ElementKind kind = ElementKind::Any;
    std::vector<ArrayDimension> dimensions;
    std::vector<ArrayElement> elements;
    friend bool operator==(const ArrayValue& left, const ArrayValue& right);
};

// Integer is 16-bit, Long 32-bit, Single and Double the floating-point kinds of automation.
using Value =
    std::variant<EmptyValue, NullValue, bool, std::int16_t, std::int32_t, float, double,
                 CurrencyValue, DateValue, ErrorCodeValue, std::string, ByteArray, ArrayValue>;

struct ArrayElement {
    Value value;
    friend bool operator==(const ArrayElement&, const ArrayElement&) = default;
};

inline bool operator==(const ArrayValue& left, const ArrayValue& right) {
    return left.kind == right.kind && left.dimensions == right.dimensions &&
           left.elements == right.elements;
}

// Whether a value may stand in an array of the kind.
[[nodiscard]] inline bool FitsKind(const Value& value, ElementKind kind) noexcept {
    return kind == ElementKind::Any || value.index() == static_cast<std::size_t>(kind);
}

// The product of the dimensions' counts; nothing when it exceeds 32 bits.
[[nodiscard]] std::optional<std::size_t> ElementCount(
    std::span<const ArrayDimension> dimensions) noexcept;

// Whether the array has one to eight dimensions and as many elements as ElementCount says.
[[nodiscard]] bool HasItsShape(const ArrayValue& array) noexcept;

// Bounds of what is taken in from documents, snapshots and other programs. An array in a value
// counts as level 1, arrays among its elements as level 2.
namespace ValueLimit {
inline constexpr int ArrayLevels = 16;
inline constexpr std::size_t Dimensions = 8;
inline constexpr std::size_t Elements = std::size_t{1} << 20;
}  // namespace ValueLimit

}  // namespace krv
