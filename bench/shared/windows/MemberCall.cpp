#include "bench/shared/windows/MemberCall.h"

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Variants.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ArgumentNotOptional = 449;
constexpr WORD PutFlags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

_variant_t Converted(const VARIANT& value, VARTYPE kind, USHORT flags = 0) {
    _variant_t converted;
    if (FAILED(VariantChangeType(&converted, const_cast<VARIANT*>(&value), flags, kind))) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    return converted;
}

}  // namespace

MemberCall::MemberCall(WORD flags, const DISPPARAMS& parameters) {
    UINT first = 0;
    if ((flags & PutFlags) != 0 && parameters.cArgs > 0) {
        m_newValue = &parameters.rgvarg[first++];
    }
    for (UINT at = parameters.cArgs; at > first; --at) {
        m_arguments.push_back(&parameters.rgvarg[at - 1]);
    }
}

bool MemberCall::Has(std::size_t index) const {
    return index < m_arguments.size() && !(V_VT(m_arguments[index]) == VT_ERROR &&
                                           V_ERROR(m_arguments[index]) == DISP_E_PARAMNOTFOUND);
}

_variant_t MemberCall::Argument(std::size_t index) const {
    if (!Has(index)) {
        throw Error(ArgumentNotOptional, "Argument not optional");
    }
    return Copy(*m_arguments[index]);
}

std::string MemberCall::Text(std::size_t index) const {
    return TextIn(Argument(index));
}

std::int32_t MemberCall::Number(std::size_t index) const {
    return NumberIn(Argument(index));
}

std::optional<std::int64_t> MemberCall::OptionalNumber(std::size_t index) const {
    return Has(index) ? std::optional<std::int64_t>(Number(index)) : std::nullopt;
}

std::optional<double> MemberCall::OptionalReal(std::size_t index) const {
    return Has(index) ? std::optional(RealIn(Argument(index))) : std::nullopt;
}

bool MemberCall::Flag(std::size_t index, bool ifLeftOut) const {
    return Has(index) ? FlagIn(Argument(index)) : ifLeftOut;
}

_variant_t MemberCall::Copy(const VARIANT& value) {
    _variant_t copy;
    windows::ThrowIfFailed(VariantCopyInd(&copy, const_cast<VARIANT*>(&value)));
    return copy;
}

std::int32_t NumberIn(const VARIANT& value) {
    const _variant_t number = Converted(value, VT_I4);
    return V_I4(&number);
}

double RealIn(const VARIANT& value) {
    const _variant_t number = Converted(value, VT_R8);
    return V_R8(&number);
}

bool FlagIn(const VARIANT& value) {
    const _variant_t flag = Converted(value, VT_BOOL);
    return V_BOOL(&flag) != VARIANT_FALSE;
}

std::string TextIn(const VARIANT& value) {
    const _variant_t text = Converted(value, VT_BSTR, VARIANT_ALPHABOOL);
    return windows::TextOf(V_BSTR(&text));
}

}  // namespace krv::bench
