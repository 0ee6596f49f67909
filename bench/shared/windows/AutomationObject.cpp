#include "bench/shared/windows/AutomationObject.h"

#include <cwchar>
#include <exception>

#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr std::int32_t WrongArgumentCount = 450;

HRESULT Fill(EXCEPINFO* exception, const char* source, HRESULT code,
             const std::string& description) noexcept {
    if (exception == nullptr) {
        return code;
    }
    *exception = {};
    exception->scode = code;
    try {
        exception->bstrDescription = AsVariant(description).Detach().bstrVal;
        exception->bstrSource = AsVariant(std::string(source)).Detach().bstrVal;
    } catch (const std::exception&) {
        // The number alone still says that the call failed.
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

bool IsMemberName(std::wstring_view name, std::wstring_view wanted) {
    return name.size() == wanted.size() && _wcsnicmp(name.data(), wanted.data(), name.size()) == 0;
}

HRESULT ReportException(EXCEPINFO* exception, const char* source) noexcept {
    try {
        throw;
    } catch (const Error& error) {
        return Fill(exception, source, windows::ToHresult(error.Number()), error.Description());
    } catch (const std::bad_alloc&) {
        return Fill(exception, source, E_OUTOFMEMORY, "There is not enough memory.");
    } catch (const std::exception& error) {
        return Fill(exception, source, E_UNEXPECTED, error.what());
    } catch (...) {
        return Fill(exception, source, E_UNEXPECTED, "An unknown error occurred.");
    }
}

_variant_t CallDefault(const _variant_t& object, DISPPARAMS& parameters) {
    if (V_VT(&object) != VT_DISPATCH || V_DISPATCH(&object) == nullptr) {
        throw Error(WrongArgumentCount, "Wrong number of arguments or invalid property assignment");
    }
    _variant_t result;
    EXCEPINFO exception{};
    const HRESULT called = V_DISPATCH(&object)->Invoke(DISPID_VALUE, IID_NULL, OwnLocale,
                                                       DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                                                       &parameters, &result, &exception, nullptr);
    const _bstr_t description(exception.bstrDescription, false);
    const _bstr_t source(exception.bstrSource, false);
    if (called == DISP_E_EXCEPTION) {
        throw Error(windows::ToErrorNumber(exception.scode), TextIn(_variant_t(description)));
    }
    windows::ThrowIfFailed(called);
    return result;
}

}  // namespace krv::bench
