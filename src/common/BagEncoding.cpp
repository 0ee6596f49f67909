#include <bit>
#include <concepts>

#include "common/BagContents.h"
#include "common/BagFormat.h"
#include "common/Crc32.h"
#include "common/Error.h"

namespace krv {
namespace {

[[noreturn]] void Refuse(const char* why) {
    throw Error(ErrorNumber::InvalidPropertyValue, std::string("Can't be kept: ") + why);
}

void RequireSize(std::size_t bytes) {
    if (bytes > BagLimit::Bytes) {
        Refuse("more than 64 megabytes.");
    }
}

class Encoder {
 public:
    void Entries(std::span<const BagEntry> entries) {
        Count(entries.size());
        Number(static_cast<std::uint32_t>(entries.size()));
        if (bag::HasNameTwice(entries)) {
            Refuse("a name is there twice.");
        }
        for (const auto& [name, value] : entries) {
            (*this)(name);
            Any(value);
        }
    }

    [[nodiscard]] std::vector<std::byte> Finish() && {
        const std::size_t payload = m_bytes.size() - bag::HeaderBytes;
        for (std::size_t byte = 0; byte < 4; ++byte) {
            m_bytes[bag::HeaderBytes - 4 + byte] = static_cast<std::byte>(payload >> (8 * byte));
        }
        Crc32 sum;
        sum.Add(m_bytes);
        Number(sum.Value());
        return std::move(m_bytes);
    }

    Encoder() {
        for (const char character : bag::Signature) {
            m_bytes.push_back(static_cast<std::byte>(character));
        }
        Number(bag::Version);
        Number(std::uint32_t{0});
    }

    void operator()(EmptyValue) {}
    void operator()(NullValue) {}
    void operator()(bool value) { m_bytes.push_back(std::byte{value}); }
    void operator()(std::int16_t value) { Number(static_cast<std::uint16_t>(value)); }
    void operator()(std::int32_t value) { Number(static_cast<std::uint32_t>(value)); }
    void operator()(float value) { Number(std::bit_cast<std::uint32_t>(value)); }
    void operator()(double value) { Number(std::bit_cast<std::uint64_t>(value)); }
    void operator()(CurrencyValue value) {
        Number(static_cast<std::uint64_t>(value.tenThousandths));
    }
    void operator()(DateValue value) { (*this)(value.days); }
    void operator()(ErrorCodeValue value) { (*this)(value.code); }
    void operator()(const std::string& value) {
        Run({reinterpret_cast<const std::byte*>(value.data()), value.size()});
    }
    void operator()(const ByteArray& value) {
        (*this)(value.lowerBound);
        Run(value.bytes);
    }
    void operator()(const ArrayValue& value) {
        if (++m_level > ValueLimit::ArrayLevels) {
            Refuse("arrays are nested too deep.");
        }
        RequireShape(value);
        m_bytes.push_back(static_cast<std::byte>(value.kind));
        m_bytes.push_back(static_cast<std::byte>(value.dimensions.size()));
        for (const ArrayDimension& dimension : value.dimensions) {
            Number(dimension.count);
            (*this)(dimension.lowerBound);
        }
        for (const ArrayElement& element : value.elements) {
            Element(element.value, value.kind);
        }
        --m_level;
    }

 private:
    template <std::unsigned_integral T>
    void Number(T value) {
        for (std::size_t byte = 0; byte < sizeof value; ++byte) {
            m_bytes.push_back(static_cast<std::byte>(value >> (8 * byte)));
        }
    }

    void Run(std::span<const std::byte> bytes) {
        RequireSize(m_bytes.size() + bytes.size());
        Number(static_cast<std::uint32_t>(bytes.size()));
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }

    void Any(const Value& value) {
        m_bytes.push_back(static_cast<std::byte>(value.index()));
        std::visit(*this, value);
        RequireSize(m_bytes.size());
    }

    void Element(const Value& value, ElementKind kind) {
        if (!FitsKind(value, kind)) {
            Refuse("an array holds an element of another kind.");
        }
        if (kind == ElementKind::Any) {
            Any(value);
        } else {
            std::visit(*this, value);
        }
    }

    void Count(std::size_t values) {
        if (values > BagLimit::Values - m_values) {
            Refuse("too many values.");
        }
        m_values += values;
    }

    void RequireShape(const ArrayValue& value) {
        Count(value.elements.size());
        if (!HasItsShape(value)) {
            Refuse("an array's elements don't fill its dimensions.");
        }
    }

    std::vector<std::byte> m_bytes;
    std::size_t m_values = 0;
    int m_level = 0;
};

}  // namespace

std::vector<std::byte> EncodeBag(std::span<const BagEntry> entries) {
    Encoder encoder;
    encoder.Entries(entries);
    return std::move(encoder).Finish();
}

}  // namespace krv
