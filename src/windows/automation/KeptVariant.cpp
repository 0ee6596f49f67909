#include "windows/automation/KeptVariant.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <optional>
#include <string_view>
#include <type_traits>

#include "common/BagContents.h"
#include "common/Error.h"
#include "windows/automation/ArrayAccess.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/VariantArrays.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

constexpr std::array<std::byte, 8> Mark{std::byte{'K'}, std::byte{'R'}, std::byte{'V'},
                                        std::byte{'V'}, std::byte{'A'}, std::byte{'R'},
                                        std::byte{'1'}, std::byte{0}};
constexpr std::uint32_t NoText = 0xFFFFFFFF;
// The fewest bytes that an element takes: a VARIANT's type, and a text's length.
constexpr std::size_t TypeBytes = sizeof(VARTYPE);
constexpr std::size_t LengthBytes = sizeof(std::uint32_t);

struct SizeOfType {
    VARTYPE type;
    std::size_t size;
};

// The types of values without parts, and their bytes.
constexpr std::array Sizes{SizeOfType{VT_EMPTY, 0},
                           SizeOfType{VT_NULL, 0},
                           SizeOfType{VT_I1, 1},
                           SizeOfType{VT_UI1, 1},
                           SizeOfType{VT_I2, 2},
                           SizeOfType{VT_UI2, 2},
                           SizeOfType{VT_BOOL, 2},
                           SizeOfType{VT_I4, 4},
                           SizeOfType{VT_UI4, 4},
                           SizeOfType{VT_INT, 4},
                           SizeOfType{VT_UINT, 4},
                           SizeOfType{VT_R4, 4},
                           SizeOfType{VT_ERROR, 4},
                           SizeOfType{VT_I8, 8},
                           SizeOfType{VT_UI8, 8},
                           SizeOfType{VT_R8, 8},
                           SizeOfType{VT_CY, 8},
                           SizeOfType{VT_DATE, 8},
                           SizeOfType{VT_DECIMAL, sizeof(DECIMAL)}};

// Nothing for other types.
std::optional<std::size_t> SizeOf(VARTYPE type) {
    const auto found = std::find_if(Sizes.begin(), Sizes.end(),
                                    [type](const SizeOfType& entry) { return entry.type == type; });
    return found == Sizes.end() ? std::nullopt : std::optional(found->size);
}

bool HasMark(std::span<const std::byte> bytes) {
    return bytes.size() >= Mark.size() && std::equal(Mark.begin(), Mark.end(), bytes.begin());
}

class Writer {
 public:
    explicit Writer(std::vector<std::byte>& bytes) : m_bytes(bytes) {}

    void Any(const VARIANT& variant) {
        if ((V_VT(&variant) & VT_BYREF) != 0) {
            _variant_t direct;
            ThrowIfFailed(VariantCopyInd(&direct, const_cast<VARIANT*>(&variant)));
            Any(direct);
            return;
        }
        Plain(V_VT(&variant));
        if ((V_VT(&variant) & VT_ARRAY) != 0) {
            Array(V_ARRAY(&variant), V_VT(&variant));
        } else if (V_VT(&variant) == VT_BSTR) {
            Text(V_BSTR(&variant));
        } else if (V_VT(&variant) == VT_DECIMAL) {
            // The VARIANT's type lies in it.
            DECIMAL decimal = V_DECIMAL(&variant);
            decimal.wReserved = 0;
            Plain(decimal);
        } else if (const auto size = SizeOf(V_VT(&variant))) {
            Raw(&V_I8(&variant), *size);
        } else {
            throw WrongKind(V_VT(&variant));
        }
    }

 private:
    void Raw(const void* data, std::size_t size) {
        if (size > BagLimit::Bytes - std::min(BagLimit::Bytes, m_bytes.size())) {
            throw Error(ErrorNumber::InvalidPropertyValue,
                        "Can't be kept: more than 64 megabytes.");
        }
        const auto* const first = static_cast<const std::byte*>(data);
        m_bytes.insert(m_bytes.end(), first, first + size);
    }
    template <class Number>
    void Plain(const Number& number) {
        static_assert(std::is_trivially_copyable_v<Number>);
        Raw(&number, sizeof number);
    }

    // Texts have bytes, not always a whole number of characters.
    void Text(BSTR text) {
        const auto length = static_cast<std::uint32_t>(SysStringByteLen(text));
        Plain(text == nullptr ? NoText : length);
        Raw(text, length);
    }

    void Array(SAFEARRAY* array, VARTYPE type) {
        if (array == nullptr) {
            throw WrongKind(type);
        }
        const UINT dimensions = SafeArrayGetDim(array);
        if (dimensions > ValueLimit::Dimensions || ++m_level > ValueLimit::ArrayLevels) {
            throw Error(ErrorNumber::TypeMismatch, "The array is too large or too deep.");
        }
        Plain(static_cast<std::uint8_t>(dimensions));
        std::size_t count = 1;
        for (UINT dimension = 1; dimension <= dimensions; ++dimension) {
            const std::size_t extent = Extent(array, dimension);
            Plain(static_cast<std::uint32_t>(extent));
            Plain(LowerBound(array, dimension));
            count *= extent;
        }
        Elements(array, static_cast<VARTYPE>(type & VT_TYPEMASK), count);
        --m_level;
    }

    void Elements(SAFEARRAY* array, VARTYPE type, std::size_t count) {
        const ArrayAccess access(array);
        if (const auto size = SizeOf(type).value_or(0); size > 0) {
            Raw(access.Elements<std::byte>(), count * size);
            return;
        }
        for (std::size_t index = 0; index < count; ++index) {
            if (type == VT_VARIANT) {
                Any(access.Elements<VARIANT>()[index]);
            } else if (type == VT_BSTR) {
                Text(access.Elements<BSTR>()[index]);
            } else {
                throw WrongKind(static_cast<VARTYPE>(VT_ARRAY | type));
            }
        }
    }

    std::vector<std::byte>& m_bytes;
    int m_level = 0;
};

Error Damaged() {
    return Error(ErrorNumber::InvalidFileFormat, "The kept value is damaged.");
}

class Reader {
 public:
    explicit Reader(std::span<const std::byte> bytes) : m_left(bytes) {}

    _variant_t Whole() {
        _variant_t variant;
        Any(variant);
        if (!m_left.empty()) {
            throw Damaged();
        }
        return variant;
    }

 private:
    // Fills an empty VARIANT.
    void Any(VARIANT& variant) {
        const auto type = Plain<VARTYPE>();
        if ((type & VT_ARRAY) != 0) {
            V_ARRAY(&variant) = Array(static_cast<VARTYPE>(type & ~VT_ARRAY));
        } else if (type == VT_BSTR) {
            V_BSTR(&variant) = Text();
        } else if (type == VT_DECIMAL) {
            V_DECIMAL(&variant) = Plain<DECIMAL>();
        } else if (const auto size = SizeOf(type)) {
            const auto bytes = Take(*size);
            std::copy(bytes.begin(), bytes.end(), reinterpret_cast<std::byte*>(&V_I8(&variant)));
        } else {
            throw Damaged();
        }
        // After the content, which may not come.
        V_VT(&variant) = type;
    }

    std::span<const std::byte> Take(std::size_t count) {
        if (count > m_left.size()) {
            throw Damaged();
        }
        const auto taken = m_left.first(count);
        m_left = m_left.subspan(count);
        return taken;
    }
    template <class Number>
    Number Plain() {
        Number number{};
        std::memcpy(&number, Take(sizeof number).data(), sizeof number);
        return number;
    }

    BSTR Text() {
        const auto length = Plain<std::uint32_t>();
        if (length == NoText) {
            return nullptr;
        }
        const auto bytes = Take(length);
        const BSTR text =
            SysAllocStringByteLen(reinterpret_cast<const char*>(bytes.data()), length);
        if (text == nullptr) {
            throw std::bad_alloc();
        }
        return text;
    }

    // The caller owns it.
    SAFEARRAY* Array(VARTYPE type) {
        const std::size_t dimensions = Plain<std::uint8_t>();
        if (dimensions == 0 || dimensions > ValueLimit::Dimensions ||
            ++m_level > ValueLimit::ArrayLevels) {
            throw Damaged();
        }
        std::vector<SAFEARRAYBOUND> bounds(dimensions);
        for (SAFEARRAYBOUND& bound : bounds) {
            bound.cElements = Plain<std::uint32_t>();
            bound.lLbound = Plain<LONG>();
        }
        const std::size_t count = CountIn(bounds, FewestBytes(type));
        _variant_t owner;
        V_ARRAY(&owner) = SafeArrayCreate(type, static_cast<UINT>(dimensions), bounds.data());
        if (V_ARRAY(&owner) == nullptr) {
            throw std::bad_alloc();
        }
        V_VT(&owner) = static_cast<VARTYPE>(VT_ARRAY | type);
        Elements(V_ARRAY(&owner), type, count);
        --m_level;
        return owner.Detach().parray;
    }

    static std::size_t FewestBytes(VARTYPE type) {
        const std::size_t size = SizeOf(type).value_or(0);
        if (size == 0 && type != VT_VARIANT && type != VT_BSTR) {
            throw Damaged();
        }
        return size > 0 ? size : type == VT_VARIANT ? TypeBytes : LengthBytes;
    }

    // How many elements there are; what is left must be able to hold them.
    [[nodiscard]] std::size_t CountIn(const std::vector<SAFEARRAYBOUND>& bounds,
                                      std::size_t fewestBytes) const {
        const auto isEmpty = [](const SAFEARRAYBOUND& bound) { return bound.cElements == 0; };
        if (std::any_of(bounds.begin(), bounds.end(), isEmpty)) {
            return 0;
        }
        std::size_t count = 1;
        for (const SAFEARRAYBOUND& bound : bounds) {
            if (count > m_left.size() / fewestBytes / bound.cElements) {
                throw Damaged();
            }
            count *= bound.cElements;
        }
        return count;
    }

    void Elements(SAFEARRAY* array, VARTYPE type, std::size_t count) {
        const ArrayAccess access(array);
        if (const auto size = SizeOf(type).value_or(0); size > 0) {
            const auto bytes = Take(count * size);
            std::copy(bytes.begin(), bytes.end(), access.Elements<std::byte>());
            return;
        }
        for (std::size_t index = 0; index < count; ++index) {
            if (type == VT_VARIANT) {
                Any(access.Elements<VARIANT>()[index]);
            } else {
                access.Elements<BSTR>()[index] = Text();
            }
        }
    }

    std::span<const std::byte> m_left;
    int m_level = 0;
};

bool HoldsExactly(BSTR text) {
    if (text == nullptr || SysStringByteLen(text) % sizeof(wchar_t) != 0) {
        return false;
    }
    const std::wstring_view wide(text, SysStringLen(text));
    return ToWide(ToUtf8(wide)) == wide;
}

// Whether a Value made of it becomes this very VARIANT again.
bool IsHeldExactly(const VARIANT& variant) {
    switch (V_VT(&variant)) {
        case VT_EMPTY:
        case VT_NULL:
        case VT_I2:
        case VT_I4:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return true;
        case VT_BOOL:
            return V_BOOL(&variant) == VARIANT_TRUE || V_BOOL(&variant) == VARIANT_FALSE;
        case VT_ERROR: {
            const _variant_t back = ToVariant(ToValue(variant));
            return V_ERROR(&back) == V_ERROR(&variant);
        }
        case VT_BSTR:
            return HoldsExactly(V_BSTR(&variant));
        case VT_ARRAY | VT_UI1: {
            SAFEARRAY* const array = V_ARRAY(&variant);
            if (array == nullptr || SafeArrayGetDim(array) != 1) {
                return false;
            }
            const ArrayAccess access(array);
            return !HasMark({access.Elements<const std::byte>(), Extent(array, 1)});
        }
        default:
            return false;
    }
}

}  // namespace

Value KeepVariant(const VARIANT& variant) {
    if (IsHeldExactly(variant)) {
        return ToValue(variant);
    }
    ByteArray kept{{Mark.begin(), Mark.end()}};
    Writer(kept.bytes).Any(variant);
    return kept;
}

_variant_t GiveBackVariant(const Value& value) {
    const auto* const kept = std::get_if<ByteArray>(&value);
    if (kept == nullptr || !HasMark(kept->bytes)) {
        return ToVariant(value);
    }
    return Reader(std::span(kept->bytes).subspan(Mark.size())).Whole();
}

}  // namespace krv::windows
