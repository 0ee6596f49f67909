#include "formats/SampleType.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace krv::formats {
namespace {

constexpr bool IsBigMachine = std::endian::native == std::endian::big;

template <class T, bool Swapped>
T LoadSample(const std::byte* from) noexcept {
    std::array<std::byte, sizeof(T)> bytes;
    std::memcpy(bytes.data(), from, sizeof(T));
    if constexpr (Swapped) {
        std::reverse(bytes.begin(), bytes.end());
    }
    return std::bit_cast<T>(bytes);
}

template <class T, bool Swapped>
void DecodeRow(const std::byte* from, std::span<double> values, double middle) noexcept {
    for (std::size_t k = 0; k < values.size(); ++k) {
        values[k] = static_cast<double>(LoadSample<T, Swapped>(from + k * sizeof(T))) - middle;
    }
}

template <class T>
void DecodeAs(SampleType type, const std::byte* from, std::span<double> values,
              double middle = 0) noexcept {
    if (type.isBigEndian == IsBigMachine) {
        DecodeRow<T, false>(from, values, middle);
    } else {
        DecodeRow<T, true>(from, values, middle);
    }
}

void DecodeThreeBytes(SampleType type, const std::byte* from, std::span<double> values) noexcept {
    const std::size_t low = type.isBigEndian ? 2 : 0;
    const std::size_t high = 2 - low;
    for (double& value : values) {
        const auto bits = std::to_integer<std::uint32_t>(from[low]) << 8U |
                          std::to_integer<std::uint32_t>(from[1]) << 16U |
                          std::to_integer<std::uint32_t>(from[high]) << 24U;
        const auto shifted = static_cast<std::int32_t>(bits);
        value = type.kind == SampleKind::Signed ? static_cast<double>(shifted / 256)
                                                : static_cast<double>(bits >> 8U) - 8388608.0;
        from += 3;
    }
}

void DecodeIntegers(SampleType type, const std::byte* from, std::span<double> values) noexcept {
    const bool isSigned = type.kind == SampleKind::Signed;
    switch (type.bytes) {
        case 1:
            return isSigned ? DecodeAs<std::int8_t>(type, from, values)
                            : DecodeAs<std::uint8_t>(type, from, values, 128);
        case 2:
            return isSigned ? DecodeAs<std::int16_t>(type, from, values)
                            : DecodeAs<std::uint16_t>(type, from, values, 32768);
        case 3:
            return DecodeThreeBytes(type, from, values);
        case 4:
            return isSigned ? DecodeAs<std::int32_t>(type, from, values)
                            : DecodeAs<std::uint32_t>(type, from, values, 2147483648.0);
        default:
            return isSigned ? DecodeAs<std::int64_t>(type, from, values)
                            : DecodeAs<std::uint64_t>(type, from, values);
    }
}

}  // namespace

std::optional<SampleLayout> ParseSampleLayout(std::string_view name) {
    SampleLayout layout;
    layout.type.isBigEndian = name.ends_with("_be");
    if (name.ends_with("_be") || name.ends_with("_le")) {
        name.remove_suffix(3);
    }
    if (name.size() < 3 || (name[0] != 'c' && name[0] != 'r')) {
        return std::nullopt;
    }
    layout.isComplex = name[0] == 'c';
    static constexpr std::string_view Kinds = "iuf";
    const std::size_t kind = Kinds.find(name[1]);
    int bits = 0;
    const auto [end, error] = std::from_chars(name.data() + 2, name.data() + name.size(), bits);
    const bool isWhole = error == std::errc() && end == name.data() + name.size();
    const bool isFloat = kind == 2;
    const bool isKnown = isFloat ? bits == 32 || bits == 64 : bits == 8 || bits == 16 || bits == 32;
    if (kind == std::string_view::npos || !isWhole || !isKnown) {
        return std::nullopt;
    }
    layout.type.kind = static_cast<SampleKind>(kind);
    layout.type.bytes = static_cast<std::uint8_t>(bits / 8);
    return layout;
}

std::string DescribeType(SampleType type) {
    static constexpr std::array<const char*, 3> Kinds{"-bit integers", "-bit unsigned integers",
                                                      "-bit floats"};
    return std::to_string(8 * type.bytes) + Kinds.at(static_cast<std::size_t>(type.kind)) +
           (type.isBigEndian && type.bytes > 1 ? ", big endian" : "");
}

double FullScaleOf(SampleType type) noexcept {
    if (type.kind == SampleKind::Float) {
        return 1;
    }
    return type.bytes > 4 ? 0 : static_cast<double>(std::uint64_t{1} << (8U * type.bytes - 1));
}

double ZeroOf(SampleType type) noexcept {
    return type.kind == SampleKind::Unsigned ? FullScaleOf(type) : 0;
}

void Decode(SampleType type, std::span<const std::byte> bytes, std::span<double> values) noexcept {
    if (type.kind != SampleKind::Float) {
        DecodeIntegers(type, bytes.data(), values);
    } else if (type.bytes == 4) {
        DecodeAs<float>(type, bytes.data(), values);
    } else {
        DecodeAs<double>(type, bytes.data(), values);
    }
}

}  // namespace krv::formats
