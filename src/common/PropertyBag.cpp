#include "common/PropertyBag.h"

#include <type_traits>
#include <utility>
#include <variant>

#include "common/Error.h"
#include "common/Numbers.h"
#include "common/Text.h"

namespace krv {
namespace {

double NumberIn(const Value& found) {
    return std::visit(
        [](const auto& value) -> double {
            using Kind = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Kind, bool>) {
                return value ? -1 : 0;
            } else if constexpr (std::is_arithmetic_v<Kind>) {
                return static_cast<double>(value);
            } else if constexpr (std::is_same_v<Kind, std::string>) {
                return TextToDouble(value);
            } else {
                throw Error(ErrorNumber::TypeMismatch);
            }
        },
        found);
}

}  // namespace

Value PropertyBag::Read(const std::string& name, const Value& defaultValue) {
    return Find(name).value_or(defaultValue);
}

bool PropertyBag::ReadBoolean(const std::string& name, bool defaultValue) {
    const Value found = Read(name, defaultValue);
    if (const auto* text = std::get_if<std::string>(&found)) {
        if (EqualIgnoringCase(*text, "True") || EqualIgnoringCase(*text, "False")) {
            return EqualIgnoringCase(*text, "True");
        }
    }
    return NumberIn(found) != 0;
}

std::int32_t PropertyBag::ReadLong(const std::string& name, std::int32_t defaultValue) {
    return ToInt32(NumberIn(Read(name, defaultValue)));
}

std::string PropertyBag::ReadText(const std::string& name, const std::string& defaultValue) {
    Value found = Read(name, defaultValue);
    if (auto* text = std::get_if<std::string>(&found)) {
        return std::move(*text);
    }
    throw Error(ErrorNumber::TypeMismatch);
}

}  // namespace krv
