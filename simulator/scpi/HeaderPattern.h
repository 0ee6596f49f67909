// Command headers in the notation of the standards: upper-case letters are a mnemonic's short form,
// nodes in brackets may be left out. E.g. "SYSTem:ERRor[:NEXT]?",
// "[SOURce:]FREQuency".
#pragma once

#include <string_view>

namespace krv::simulator {

// Whether the header, as a client wrote it, is the pattern's command: in any case, each mnemonic in
// exactly its short or its long form, with or without a leading colon.
[[nodiscard]] bool HeaderMatches(std::string_view pattern, std::string_view header) noexcept;

}  // namespace krv::simulator
