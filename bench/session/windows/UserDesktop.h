// The desktop as its user meets it: windows are waited for until they are there.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/session/windows/UserWindow.h"

namespace krv::bench {

// How long a user waits for anything before giving up: long enough for a busy machine.
inline constexpr DWORD PatienceMs = 120000;

// Waits until it holds; false when it doesn't in time.
bool WaitUntil(const std::function<bool()>& holds, DWORD patienceMs = PatienceMs);

// Shown top-level windows of all processes, or of one.
[[nodiscard]] std::vector<UserWindow> TopWindows(DWORD process = 0);

// The shown window of this caption, waited for; a caption that ends with * fits what begins so.
// Message boxes, which often have the caption of what they come from, don't count.
UserWindow WindowOf(std::string_view caption, DWORD process = 0);

// Waits until no window has the caption.
void ExpectNoWindow(std::string_view caption);

// The message box whose text contains this, waited for.
UserWindow MessageBoxOf(std::string_view text, DWORD process = 0);

// Waits for the message box, presses its button of this caption, waits until it is gone, and
// returns its whole text.
std::string Answer(std::string_view text, std::string_view button, DWORD process = 0);

}  // namespace krv::bench
