#include "windows/automation/LateBound.h"

#include <algorithm>

#include "common/Hexadecimal.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

constexpr LCID UsEnglish = 1033;

// In words for a call that failed without any.
std::string DescribeRefusal(const wchar_t* member, HRESULT result) {
    const std::string known = DescribeKnownResult(result);
    if (!known.empty() && result != E_FAIL) {
        return known;
    }
    return "\"" + ToUtf8(member) + "\" failed, and the application gave no reason (error 0x" +
           Hexadecimal(static_cast<std::uint32_t>(result)) +
           ").  Check that the sheet or document is open and not protected, and that no cell is "
           "being edited, and try again.";
}

// What a call left behind; its texts are the receiver's to free.
class CallException {
 public:
    CallException() = default;
    CallException(const CallException&) = delete;
    CallException& operator=(const CallException&) = delete;
    ~CallException() {
        SysFreeString(information.bstrDescription);
        SysFreeString(information.bstrSource);
        SysFreeString(information.bstrHelpFile);
    }

    [[noreturn]] void Throw(const wchar_t* member) {
        if (information.pfnDeferredFillIn != nullptr) {
            information.pfnDeferredFillIn(&information);
        }
        // Either a code of the callee's own or a result.
        const HRESULT told = information.wCode != 0
                                 ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL,
                                                static_cast<HRESULT>(information.wCode))
                                 : information.scode;
        const HRESULT result = FAILED(told) ? told : E_FAIL;
        std::string description = TextOf(information.bstrDescription);
        if (description.empty()) {
            description = DescribeRefusal(member, result);
        }
        throw Error(ToErrorNumber(result), description, TextOf(information.bstrSource));
    }

    EXCEPINFO information{};
};

bool IsMissing(HRESULT result) {
    return result == REGDB_E_CLASSNOTREG || result == CO_E_CLASSSTRING ||
           result == CO_E_DLLNOTFOUND || result == CO_E_APPNOTFOUND ||
           result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ||
           result == HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND);
}

Error NotCreated(const wchar_t* progId, HRESULT result) {
    const std::string component = "The component \"" + ToUtf8(progId) + "\" ";
    if (IsMissing(result)) {
        return Error(ErrorNumber::CannotCreateObject,
                     component +
                         "is not installed on this computer.  Install the Tallyport suite, or "
                         "repair its installation.");
    }
    return Error(ErrorNumber::CannotCreateObject,
                 component + "could not be started.  " + DescribeResult(result));
}

}  // namespace

LateBound::LateBound(IUnknown* object) {
    if (object == nullptr) {
        return;
    }
    ThrowIfFailed(
        object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(m_object.GetAddressOf())));
}

LateBound::LateBound(const VARIANT& object) {
    const VARTYPE kind = V_VT(&object);
    if (kind == VT_DISPATCH || kind == VT_UNKNOWN) {
        *this = LateBound(V_UNKNOWN(&object));
    } else if (kind != VT_EMPTY && kind != VT_NULL) {
        throw Error(ErrorNumber::TypeMismatch);
    }
}

LateBound LateBound::Through(IDispatch& members) {
    LateBound bound;
    bound.m_object = &members;
    return bound;
}

LateBound LateBound::Create(const wchar_t* progId) {
    CLSID id{};
    if (const HRESULT result = CLSIDFromProgID(progId, &id); FAILED(result)) {
        throw NotCreated(progId, result);
    }
    ComPtr<IUnknown> object;
    const HRESULT result =
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IUnknown,
                         reinterpret_cast<void**>(object.GetAddressOf()));
    if (FAILED(result)) {
        throw NotCreated(progId, result);
    }
    return LateBound(object.Get());
}

_variant_t LateBound::Get(const wchar_t* name) const {
    std::vector<VARIANT> none;
    return Invoke(name, DISPATCH_PROPERTYGET | DISPATCH_METHOD, none);
}

LateBound LateBound::GetObject(const wchar_t* name) const {
    return LateBound(Get(name));
}

std::string LateBound::GetText(const wchar_t* name) const {
    return TextOf(Get(name));
}

long LateBound::GetLong(const wchar_t* name) const {
    return LongOf(Get(name));
}

bool LateBound::GetBool(const wchar_t* name) const {
    return BoolOf(Get(name));
}

bool LateBound::Has(const wchar_t* name) const {
    DISPID id = DISPID_UNKNOWN;
    return m_object != nullptr && SUCCEEDED(FindMember(name, id));
}

void LateBound::Put(const wchar_t* name, const _variant_t& value) const {
    std::vector<VARIANT> arguments{value};
    Invoke(name, DISPATCH_PROPERTYPUT, arguments);
}

void LateBound::PutObject(const wchar_t* name, IDispatch* object) const {
    const _variant_t value(object);
    std::vector<VARIANT> arguments{value};
    Invoke(name, DISPATCH_PROPERTYPUTREF, arguments);
}

_variant_t LateBound::Call(const wchar_t* name, std::initializer_list<_variant_t> arguments) const {
    std::vector<VARIANT> reversed(arguments.begin(), arguments.end());
    std::reverse(reversed.begin(), reversed.end());
    return Invoke(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, reversed);
}

LateBound LateBound::CallObject(const wchar_t* name,
                                std::initializer_list<_variant_t> arguments) const {
    return LateBound(Call(name, arguments));
}

_variant_t LateBound::CallByReference(const wchar_t* name, std::vector<VARIANT>& arguments) const {
    std::reverse(arguments.begin(), arguments.end());
    return Invoke(name, DISPATCH_METHOD, arguments);
}

HRESULT LateBound::FindMember(const wchar_t* name, DISPID& id) const {
    std::wstring writable(name);
    wchar_t* names = writable.data();
    return m_object->GetIDsOfNames(IID_NULL, &names, 1, UsEnglish, &id);
}

_variant_t LateBound::Invoke(const wchar_t* name, WORD flags,
                             std::vector<VARIANT>& reversed) const {
    if (m_object == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    DISPID id = DISPID_UNKNOWN;
    ThrowIfFailed(FindMember(name, id));
    DISPPARAMS parameters{};
    parameters.rgvarg = reversed.data();
    parameters.cArgs = static_cast<UINT>(reversed.size());
    DISPID putId = DISPID_PROPERTYPUT;
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &putId;
        parameters.cNamedArgs = 1;
    }
    _variant_t result;
    CallException exception;
    // The call may let messages through, and with them what ends this.
    const ComPtr<IDispatch> called = m_object;
    const HRESULT status = called->Invoke(id, IID_NULL, UsEnglish, flags, &parameters, &result,
                                          &exception.information, nullptr);
    if (status == DISP_E_EXCEPTION) {
        exception.Throw(name);
    }
    if (FAILED(status)) {
        throw Error(ToErrorNumber(status), DescribeRefusal(name, status));
    }
    return result;
}

std::string TextOf(const VARIANT& value) {
    _variant_t text;
    ThrowIfFailed(
        VariantChangeType(&text, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, VT_BSTR));
    return TextOf(V_BSTR(&text));
}

std::int32_t LongOf(const VARIANT& value) {
    VARIANT number;
    VariantInit(&number);
    ThrowIfFailed(VariantChangeType(&number, const_cast<VARIANT*>(&value), 0, VT_I4));
    return static_cast<std::int32_t>(V_I4(&number));
}

double DoubleOf(const VARIANT& value) {
    VARIANT number;
    VariantInit(&number);
    ThrowIfFailed(VariantChangeType(&number, const_cast<VARIANT*>(&value), 0, VT_R8));
    return V_R8(&number);
}

bool BoolOf(const VARIANT& value) {
    VARIANT truth;
    VariantInit(&truth);
    ThrowIfFailed(VariantChangeType(&truth, const_cast<VARIANT*>(&value), 0, VT_BOOL));
    return V_BOOL(&truth) != VARIANT_FALSE;
}

}  // namespace krv::windows
