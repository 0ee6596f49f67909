#include "suite/windows/server/ReceivedCodes.h"

#include "common/Error.h"

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

ReceivedCodes::ReceivedCodes(const VARIANT* argument) {
    SAFEARRAY* const array = ArrayIn(argument);
    if (array == nullptr) {
        return;
    }
    if (SafeArrayGetDim(array) != 1) {
        throw Refusal();
    }
    m_access.emplace(array);
    m_codes = {m_access->Elements<const std::int16_t>(), windows::Extent(array, 1)};
}

}  // namespace krv::suite
