#include "tests/windows/scripting/ScriptChecks.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

#include "windows/automation/ArrayAccess.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"

namespace krv::tests {

using namespace windows;
namespace {

// Scripts hand variables over by reference.
_variant_t Argument(const ScriptedCall& call, std::size_t index) {
    if (index >= call.Arguments.size()) {
        throw CallFailure{DISP_E_BADPARAMCOUNT};
    }
    _variant_t value;
    if (FAILED(VariantCopyInd(&value, const_cast<VARIANT*>(&call.Arguments[index])))) {
        throw CallFailure{DISP_E_TYPEMISMATCH};
    }
    return value;
}

_variant_t CodesOf(const std::string& text) {
    std::istringstream numbers(text);
    std::vector<std::int16_t> codes;
    for (std::int16_t code = 0; numbers >> code;) {
        codes.push_back(code);
    }
    _variant_t array;
    V_VT(&array) = VT_ARRAY | VT_I2;
    V_ARRAY(&array) = SafeArrayCreateVector(VT_I2, 1, static_cast<ULONG>(codes.size()));
    const windows::ArrayAccess access(V_ARRAY(&array));
    std::copy(codes.begin(), codes.end(), access.Elements<std::int16_t>());
    return array;
}

_variant_t Through(const _variant_t& object, const std::string& interfaceId) {
    IID id{};
    Microsoft::WRL::ComPtr<IDispatch> found;
    if (V_VT(&object) != VT_DISPATCH ||
        FAILED(IIDFromString(windows::ToWide(interfaceId).c_str(), &id)) ||
        FAILED(V_DISPATCH(&object)->QueryInterface(
            id, reinterpret_cast<void**>(found.GetAddressOf())))) {
        throw CallFailure{E_NOINTERFACE};
    }
    return _variant_t(found.Get());
}

}  // namespace

std::string TextOfValue(const VARIANT& value) {
    switch (V_VT(&value)) {
        case VT_EMPTY:
            return "Empty";
        case VT_NULL:
            return "Null";
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return V_UNKNOWN(&value) == nullptr ? "Nothing" : "an object";
        default:
            break;
    }
    _variant_t text;
    const HRESULT result = VariantChangeTypeEx(&text, const_cast<VARIANT*>(&value),
                                               LOCALE_INVARIANT, VARIANT_ALPHABOOL, VT_BSTR);
    return SUCCEEDED(result) ? windows::TextOf(V_BSTR(&text))
                             : "a value of kind " + std::to_string(V_VT(&value));
}

ScriptedPointer NewScriptChecks(std::vector<std::string> arguments,
                                std::function<void(const std::string&)> report) {
    ScriptedPointer checks = NewScripted();
    checks->Members[L"Equal"] = [report = std::move(report)](const ScriptedCall& call) {
        const std::string actual = TextOfValue(Argument(call, 1));
        const std::string expected = TextOfValue(Argument(call, 2));
        if (actual != expected) {
            report(TextOfValue(Argument(call, 0)) + ": \"" + actual + "\" instead of \"" +
                   expected + '"');
        }
        return _variant_t();
    };
    checks->Members[L"Argument"] = [arguments = std::move(arguments)](const ScriptedCall& call) {
        const auto number = static_cast<std::size_t>(windows::LongOf(Argument(call, 0)));
        if (number < 1 || number > arguments.size()) {
            throw CallFailure{DISP_E_BADINDEX};
        }
        return _variant_t(windows::ToWide(arguments[number - 1]).c_str());
    };
    checks->Members[L"Create"] = [](const ScriptedCall& call) {
        const _variant_t progId = Argument(call, 0);
        return _variant_t(windows::LateBound::Create(V_BSTR(&progId)).Object());
    };
    checks->Members[L"Codes"] = [](const ScriptedCall& call) {
        return CodesOf(TextOfValue(Argument(call, 0)));
    };
    checks->Members[L"Through"] = [](const ScriptedCall& call) {
        return Through(Argument(call, 0), TextOfValue(Argument(call, 1)));
    };
    return checks;
}

}  // namespace krv::tests
