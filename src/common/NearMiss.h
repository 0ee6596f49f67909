// Suggestions for words that were nearly right.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krv {

// " Did you mean 'WORD'?" with the word that takes the fewest changes of a letter, or nothing where
// all of them are too far from what was typed.
[[nodiscard]] std::string NearMissHint(std::string_view typed,
                                       const std::vector<std::string>& words);

}  // namespace krv
