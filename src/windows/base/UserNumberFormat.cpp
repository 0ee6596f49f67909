#include "windows/base/UserNumberFormat.h"

#include <windows.h>

#include <array>

namespace krv::windows {

NumberFormat UserNumberFormat() {
    // The longest separator has three characters and a NUL.
    std::array<wchar_t, 4> separator{};
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(),
                                      static_cast<int>(separator.size()));
    constexpr wchar_t LastAscii = 0x7F;
    if (length != 2 || separator[0] > LastAscii) {
        return {};
    }
    return {static_cast<char>(separator[0])};
}

}  // namespace krv::windows
