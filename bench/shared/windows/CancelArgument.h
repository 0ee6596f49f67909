// CancelArgument: an event's last argument, by which its receivers may cancel what follows.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oleauto.h>

namespace krv::bench {

class CancelArgument {
 public:
    [[nodiscard]] VARIANT Reference() {
        VARIANT reference;
        VariantInit(&reference);
        V_VT(&reference) = VT_BOOL | VT_BYREF;
        V_BOOLREF(&reference) = &m_isSet;
        return reference;
    }
    [[nodiscard]] bool IsSet() const { return m_isSet != VARIANT_FALSE; }

 private:
    VARIANT_BOOL m_isSet = VARIANT_FALSE;
};

}  // namespace krv::bench
