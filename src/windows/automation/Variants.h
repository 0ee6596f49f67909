// Values of automation calls: texts, lists of texts, and arguments that a call gives back.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <oleauto.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krv::windows {

// The caller owns it. Throws std::bad_alloc.
[[nodiscard]] BSTR NewText(std::string_view text);
// Null is the empty text. The argument keeps its owner.
[[nodiscard]] std::string TextOf(BSTR text);

// An array of VARIANT from 0 on, which script languages can read too.
[[nodiscard]] VARIANT NewTextList(const std::vector<std::string>& texts);

// Gives a text back through an argument by reference: a VARIANT, or what a reference in it leads
// to. Throws Error 13 when a reference leads to something that holds no text.
void GiveBack(VARIANT* argument, std::string_view text);

}  // namespace krv::windows
