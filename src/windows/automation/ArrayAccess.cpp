#include "windows/automation/ArrayAccess.h"

#include <cstdint>

#include "windows/automation/ComGuard.h"

namespace krv::windows {

ArrayAccess::ArrayAccess(SAFEARRAY* array) : m_array(array) {
    ThrowIfFailed(SafeArrayAccessData(array, &m_data));
}

std::size_t Extent(SAFEARRAY* array, UINT dimension) {
    LONG high = -1;
    ThrowIfFailed(SafeArrayGetUBound(array, dimension, &high));
    return static_cast<std::size_t>(std::int64_t{high} - LowerBound(array, dimension) + 1);
}

LONG LowerBound(SAFEARRAY* array, UINT dimension) {
    LONG low = 0;
    ThrowIfFailed(SafeArrayGetLBound(array, dimension, &low));
    return low;
}

VARTYPE ElementType(SAFEARRAY* array) {
    VARTYPE type = VT_EMPTY;
    ThrowIfFailed(SafeArrayGetVartype(array, &type));
    return type;
}

}  // namespace krv::windows
