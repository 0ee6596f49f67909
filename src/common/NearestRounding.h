// NearestRounding: arithmetic rounds to nearest, halves to even, for as long as the object lives,
// whatever the thread's floating-point mode is. We run on threads of host applications, and other
// code there may have changed it. For pure calculations that return to the caller's mode.
#pragma once

#include <cfenv>

namespace krv {

class [[nodiscard]] NearestRounding {
 public:
    NearestRounding() noexcept : m_mode(std::fegetround()) {
        if (m_mode != FE_TONEAREST) {
            std::fesetround(FE_TONEAREST);
        }
    }
    ~NearestRounding() {
        if (m_mode != FE_TONEAREST) {
            std::fesetround(m_mode);
        }
    }
    NearestRounding(const NearestRounding&) = delete;
    NearestRounding& operator=(const NearestRounding&) = delete;

 private:
    int m_mode;
};

}  // namespace krv
