#include "suite/windows/server/CodeArray.h"

#include "common/Error.h"
#include "windows/automation/ComGuard.h"

namespace krv::suite {
namespace {

Error Refusal() {
    return Error(ErrorNumber::TypeMismatch,
                 "Type mismatch: codes are a one-dimensional array of 16-bit integers.");
}

bool IsNothing(const VARIANT& argument) {
    const bool omitted = V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
    return V_VT(&argument) == VT_EMPTY || V_VT(&argument) == VT_NULL || omitted;
}

// The array of an argument; null where there is none.
SAFEARRAY* ArrayIn(const VARIANT* argument) {
    if (argument != nullptr && V_VT(argument) == (VT_BYREF | VT_VARIANT)) {
        argument = V_VARIANTREF(argument);
    }
    if (argument == nullptr || IsNothing(*argument)) {
        return nullptr;
    }
    if ((V_VT(argument) & ~VT_BYREF) != (VT_ARRAY | VT_I2)) {
        throw Refusal();
    }
    return (V_VT(argument) & VT_BYREF) != 0 ? *V_ARRAYREF(argument) : V_ARRAY(argument);
}

}  // namespace

CodeArray::CodeArray(const VARIANT* argument) {
    SAFEARRAY* const array = ArrayIn(argument);
    if (array == nullptr) {
        return;
    }
    if (SafeArrayGetDim(array) != 1) {
        throw Refusal();
    }
    void* data = nullptr;
    windows::ThrowIfFailed(SafeArrayAccessData(array, &data));
    m_array = array;
    m_codes = {static_cast<const std::int16_t*>(data), array->rgsabound[0].cElements};
}

CodeArray::~CodeArray() {
    if (m_array != nullptr) {
        SafeArrayUnaccessData(m_array);
    }
}

}  // namespace krv::suite
