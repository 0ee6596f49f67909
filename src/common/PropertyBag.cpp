#include "common/PropertyBag.h"

#include <type_traits>
#include <variant>

#include "common/Error.h"

namespace krv {

Value PropertyBag::Read(const std::string& name, const Value& defaultValue) {
    return Find(name).value_or(defaultValue);
}

bool PropertyBag::ReadBoolean(const std::string& name, bool defaultValue) {
    const Value found = Read(name, defaultValue);
    return std::visit(
        [](const auto& value) -> bool {
            using Kind = std::decay_t<decltype(value)>;
            if constexpr (std::is_arithmetic_v<Kind>) {
                return value != Kind{};
            } else {
                throw Error(ErrorNumber::TypeMismatch);
            }
        },
        found);
}

}  // namespace krv
