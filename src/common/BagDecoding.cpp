#include <algorithm>
#include <bit>
#include <concepts>
#include <optional>

#include "common/BagContents.h"
#include "common/BagFormat.h"
#include "common/Crc32.h"
#include "common/Error.h"

namespace krv {
namespace {

Error Invalid(const std::string& description) {
    return Error(ErrorNumber::InvalidFileFormat, description);
}

Error Damaged(const char* why) {
    return Invalid(std::string("The saved properties are damaged: ") + why);
}

// Numbers and runs of bytes from the front of what is left. Whatever would go past the end throws.
class BytesLeft {
 public:
    explicit BytesLeft(std::span<const std::byte> bytes) : m_left(bytes) {}

    [[nodiscard]] std::size_t Left() const noexcept { return m_left.size(); }

    std::span<const std::byte> Bytes(std::size_t count) {
        if (count > m_left.size()) {
            throw Damaged("a value goes past the end.");
        }
        const auto bytes = m_left.first(count);
        m_left = m_left.subspan(count);
        return bytes;
    }

    template <std::unsigned_integral T>
    T Number() {
        T value = 0;
        int shift = 0;
        for (const std::byte byte : Bytes(sizeof(T))) {
            value = static_cast<T>(value | static_cast<T>(std::to_integer<T>(byte)) << shift);
            shift += 8;
        }
        return value;
    }

    std::span<const std::byte> Run() { return Bytes(Number<std::uint32_t>()); }

    std::string Text() {
        const auto bytes = Run();
        return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }

 private:
    std::span<const std::byte> m_left;
};

// How few bytes an element of an array can take.
std::size_t FewestBytes(ElementKind kind) {
    switch (kind) {
        case ElementKind::Any:
        case ElementKind::Boolean:
            return 1;
        case ElementKind::Integer:
            return 2;
        case ElementKind::Double:
        case ElementKind::Currency:
        case ElementKind::Date:
            return 8;
        default:
            return 4;
    }
}

class Decoder {
 public:
    explicit Decoder(std::span<const std::byte> payload) : m_source(payload) {}

    std::vector<BagEntry> Entries() {
        // A name's length and a value's kind take five bytes at least.
        const std::size_t count = Count(m_source.Number<std::uint32_t>(), 5);
        std::vector<BagEntry> entries;
        entries.reserve(count);
        for (std::size_t index = 0; index < count; ++index) {
            std::string name = m_source.Text();
            entries.emplace_back(std::move(name), Any());
        }
        if (bag::HasNameTwice(entries)) {
            throw Damaged("a name is there twice.");
        }
        if (m_source.Left() != 0) {
            throw Damaged("there is more than the entries.");
        }
        return entries;
    }

 private:
    Value Any() { return OfKind(m_source.Number<std::uint8_t>()); }

    Value OfKind(std::uint8_t kind) {
        switch (static_cast<bag::Kind>(kind)) {
            case bag::Kind::Empty:
                return EmptyValue{};
            case bag::Kind::Null:
                return NullValue{};
            case bag::Kind::Boolean:
                return Boolean();
            case bag::Kind::Integer:
                return static_cast<std::int16_t>(m_source.Number<std::uint16_t>());
            case bag::Kind::Long:
                return Long();
            case bag::Kind::Single:
                return std::bit_cast<float>(m_source.Number<std::uint32_t>());
            case bag::Kind::Double:
                return Double();
            case bag::Kind::Currency:
                return CurrencyValue{static_cast<std::int64_t>(m_source.Number<std::uint64_t>())};
            case bag::Kind::Date:
                return DateValue{Double()};
            case bag::Kind::ErrorCode:
                return ErrorCodeValue{Long()};
            case bag::Kind::Text:
                return m_source.Text();
            case bag::Kind::Bytes:
                return Bytes();
            case bag::Kind::Array:
                return Array();
        }
        throw Damaged("a value is of an unknown kind.");
    }

    bool Boolean() {
        const auto value = m_source.Number<std::uint8_t>();
        if (value > 1) {
            throw Damaged("a value is neither true nor false.");
        }
        return value != 0;
    }

    std::int32_t Long() { return static_cast<std::int32_t>(m_source.Number<std::uint32_t>()); }
    double Double() { return std::bit_cast<double>(m_source.Number<std::uint64_t>()); }

    ByteArray Bytes() {
        const std::int32_t lowerBound = Long();
        const auto bytes = m_source.Run();
        return ByteArray{{bytes.begin(), bytes.end()}, lowerBound};
    }

    ArrayValue Array() {
        if (++m_level > ValueLimit::ArrayLevels) {
            throw Damaged("arrays are nested too deep.");
        }
        ArrayValue array;
        array.kind = KindOfElements();
        array.dimensions = Dimensions();
        const std::optional<std::size_t> product = ElementCount(array.dimensions);
        if (!product) {
            throw Damaged("an array is too large.");
        }
        const std::size_t count = Count(*product, FewestBytes(array.kind));
        array.elements.reserve(count);
        for (std::size_t index = 0; index < count; ++index) {
            const bool tells = array.kind == ElementKind::Any;
            array.elements.push_back(
                {tells ? Any() : OfKind(static_cast<std::uint8_t>(array.kind))});
        }
        --m_level;
        return array;
    }

    ElementKind KindOfElements() {
        const auto kind = static_cast<ElementKind>(m_source.Number<std::uint8_t>());
        const bool isSingle = kind >= ElementKind::Boolean && kind <= ElementKind::Text;
        if (!isSingle && kind != ElementKind::Any) {
            throw Damaged("an array is of an unknown kind.");
        }
        return kind;
    }

    std::vector<ArrayDimension> Dimensions() {
        const std::size_t count = m_source.Number<std::uint8_t>();
        if (count == 0 || count > ValueLimit::Dimensions) {
            throw Damaged("an array's dimensions are wrong.");
        }
        std::vector<ArrayDimension> dimensions(count);
        for (ArrayDimension& dimension : dimensions) {
            dimension.count = m_source.Number<std::uint32_t>();
            dimension.lowerBound = Long();
        }
        return dimensions;
    }

    // So many values are to come: what is left must be able to hold them.
    std::size_t Count(std::size_t values, std::size_t fewestBytes) {
        if (values > BagLimit::Values - m_values || values > m_source.Left() / fewestBytes) {
            throw Damaged("it tells of more values than it can hold.");
        }
        m_values += values;
        return values;
    }

    BytesLeft m_source;
    std::size_t m_values = 0;
    int m_level = 0;
};

// What lies between header and checksum.
std::span<const std::byte> CheckedPayload(std::span<const std::byte> contents) {
    const auto same = [](char character, std::byte byte) {
        return static_cast<std::byte>(character) == byte;
    };
    if (contents.size() < bag::Signature.size() ||
        !std::equal(bag::Signature.begin(), bag::Signature.end(), contents.begin(), same)) {
        throw Invalid("These aren't saved properties.");
    }
    BytesLeft header(contents.subspan(bag::Signature.size()));
    if (header.Left() < bag::HeaderBytes - bag::Signature.size()) {
        throw Invalid("The saved properties are incomplete.");
    }
    const auto version = header.Number<std::uint32_t>();
    if (version != bag::Version) {
        throw Invalid("The saved properties are of the unknown version " + std::to_string(version) +
                      ".");
    }
    const std::size_t length = header.Number<std::uint32_t>();
    if (length > BagLimit::Bytes) {
        throw Invalid("The saved properties are too large.");
    }
    if (header.Left() < length + bag::ChecksumBytes) {
        throw Invalid("The saved properties are incomplete.");
    }
    if (header.Left() > length + bag::ChecksumBytes) {
        throw Invalid("The saved properties are followed by something else.");
    }
    const auto payload = header.Bytes(length);
    Crc32 sum;
    sum.Add(contents.first(bag::HeaderBytes + length));
    if (header.Number<std::uint32_t>() != sum.Value()) {
        throw Invalid("The saved properties have been altered: their checksum doesn't fit.");
    }
    return payload;
}

}  // namespace

std::vector<BagEntry> DecodeBag(std::span<const std::byte> contents) {
    return Decoder(CheckedPayload(contents)).Entries();
}

}  // namespace krv
