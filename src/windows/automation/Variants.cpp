#include "windows/automation/Variants.h"

#include <new>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/base/WideText.h"

namespace krv::windows {

BSTR NewText(std::string_view text) {
    const std::wstring wide = ToWide(text);
    const BSTR copy = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

std::string TextOf(BSTR text) {
    return text == nullptr ? std::string() : ToUtf8(std::wstring_view(text, SysStringLen(text)));
}

VARIANT NewTextList(const std::vector<std::string>& texts) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
    if (array == nullptr) {
        throw std::bad_alloc();
    }
    _variant_t list;
    V_VT(&list) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&list) = array;
    LONG index = 0;
    for (const std::string& text : texts) {
        _variant_t item;
        V_VT(&item) = VT_BSTR;
        V_BSTR(&item) = NewText(text);
        ThrowIfFailed(SafeArrayPutElement(array, &index, &item));
        ++index;
    }
    return list.Detach();
}

void GiveBack(VARIANT* argument, std::string_view text) {
    if (V_VT(argument) == (VT_BYREF | VT_VARIANT)) {
        argument = V_VARIANTREF(argument);
    }
    if (V_VT(argument) == (VT_BYREF | VT_BSTR)) {
        const BSTR copy = NewText(text);
        SysFreeString(*V_BSTRREF(argument));
        *V_BSTRREF(argument) = copy;
        return;
    }
    if ((V_VT(argument) & VT_BYREF) != 0) {
        throw Error(ErrorNumber::TypeMismatch);
    }
    _variant_t value;
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = NewText(text);
    VariantClear(argument);
    *argument = value.Detach();
}

}  // namespace krv::windows
