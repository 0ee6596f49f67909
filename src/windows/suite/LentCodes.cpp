#include "windows/suite/LentCodes.h"

#include <limits>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"

namespace krv::windows {

LentCodes::LentCodes(std::span<const std::int16_t> codes) {
    if (codes.size() > static_cast<std::size_t>(std::numeric_limits<LONG>::max())) {
        throw Error(ErrorNumber::Overflow);
    }
    const HRESULT allocated = SafeArrayAllocDescriptorEx(VT_I2, 1, &m_array);
    if (allocated == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    ThrowIfFailed(allocated);
    m_array->fFeatures |= FADF_STATIC | FADF_FIXEDSIZE;
    m_array->cbElements = sizeof(std::int16_t);
    m_array->rgsabound[0].lLbound = 1;
    m_array->rgsabound[0].cElements = static_cast<ULONG>(codes.size());
    // Receivers only read: the argument is one that goes in.
    m_array->pvData = const_cast<std::int16_t*>(codes.data());
    m_array->cLocks = 1;
    m_shown = m_array;
}

LentCodes::~LentCodes() {
    m_array->pvData = nullptr;
    m_array->cLocks = 0;
    SafeArrayDestroyDescriptor(m_array);
}

VARIANT LentCodes::Argument() noexcept {
    VARIANT argument;
    VariantInit(&argument);
    V_VT(&argument) = VT_BYREF | VT_ARRAY | VT_I2;
    V_ARRAYREF(&argument) = &m_shown;
    return argument;
}

}  // namespace krv::windows
