// NearestRounding: arithmetic rounds to nearest, halves to even, for as long as the object lives,
// whatever the thread's floating-point mode is. We run on threads of host applications, and other
// code there may have changed it. For pure calculations that return to the caller's mode.
#pragma once

#include <cfenv>

#include "common/HasSse2.h"

#if KRV_HAS_SSE2
#include <emmintrin.h>
#endif

namespace krv {

class [[nodiscard]] NearestRounding {
 public:
    NearestRounding() noexcept {
        if (!m_isNearest) {
            std::fesetround(FE_TONEAREST);
        }
    }
    ~NearestRounding() {
        if (!m_isNearest) {
            std::fesetround(m_mode);
#if KRV_HAS_SSE2
            _MM_SET_ROUNDING_MODE(m_vectorMode);
#endif
        }
    }
    NearestRounding(const NearestRounding&) = delete;
    NearestRounding& operator=(const NearestRounding&) = delete;

 private:
    const int m_mode = std::fegetround();
#if KRV_HAS_SSE2
    // Where most arithmetic is done. The standard library tells of the older unit's mode only, and
    // sets both.
    const unsigned m_vectorMode = _MM_GET_ROUNDING_MODE();
    const bool m_isNearest = m_mode == FE_TONEAREST && m_vectorMode == _MM_ROUND_NEAREST;
#else
    const bool m_isNearest = m_mode == FE_TONEAREST;
#endif
};

}  // namespace krv
