// MemberCall: one late-bound call as the called member sees it: its arguments in the order in which
// they are written, and the value that a property is set to.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "windows/automation/VariantValue.h"

namespace krv::bench {

class MemberCall {
 public:
    // The parameters outlive the call.
    MemberCall(WORD flags, const DISPPARAMS& parameters);

    [[nodiscard]] bool IsPut() const { return m_newValue != nullptr; }
    // A copy without references.
    [[nodiscard]] _variant_t NewValue() const { return Copy(*m_newValue); }

    [[nodiscard]] std::size_t Count() const { return m_arguments.size(); }
    // False for one left out.
    [[nodiscard]] bool Has(std::size_t index) const;
    // Each throws Error 449 for an argument that was left out and 13 for one of a wrong kind.
    [[nodiscard]] _variant_t Argument(std::size_t index) const;
    [[nodiscard]] std::string Text(std::size_t index) const;
    [[nodiscard]] std::int32_t Number(std::size_t index) const;
    [[nodiscard]] std::optional<std::int64_t> OptionalNumber(std::size_t index) const;
    [[nodiscard]] std::optional<double> OptionalReal(std::size_t index) const;
    [[nodiscard]] bool Flag(std::size_t index, bool ifLeftOut) const;

 private:
    static _variant_t Copy(const VARIANT& value);

    std::vector<const VARIANT*> m_arguments;
    const VARIANT* m_newValue = nullptr;
};

// Conversions that throw Error 13 when the value is of another kind.
[[nodiscard]] std::int32_t NumberIn(const VARIANT& value);
[[nodiscard]] double RealIn(const VARIANT& value);
[[nodiscard]] bool FlagIn(const VARIANT& value);
[[nodiscard]] std::string TextIn(const VARIANT& value);

// One kind at a time, so that no argument turns into another kind on its way.
[[nodiscard]] inline _variant_t AsVariant(const std::string& text) {
    return windows::ToVariant(text);
}
[[nodiscard]] inline _variant_t AsVariant(std::same_as<bool> auto flag) {
    return windows::ToVariant(flag);
}
[[nodiscard]] inline _variant_t AsVariant(std::same_as<std::int32_t> auto number) {
    return windows::ToVariant(number);
}
[[nodiscard]] inline _variant_t AsVariant(std::same_as<double> auto number) {
    return windows::ToVariant(number);
}

}  // namespace krv::bench
