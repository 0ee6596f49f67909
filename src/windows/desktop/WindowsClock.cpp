#include "windows/desktop/WindowsClock.h"

#include <windows.h>

namespace krv::windows {

std::uint64_t WindowsClock::TickCountMs() {
    return GetTickCount64();
}

int WindowsClock::LocalSecondOfDay() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return now.wHour * 3600 + now.wMinute * 60 + now.wSecond;
}

}  // namespace krv::windows
