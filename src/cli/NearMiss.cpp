#include "cli/NearMiss.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "common/Text.h"

namespace krv::cli {
namespace {

// How many letters must be changed, added or left out to make one of the other; their case is none.
std::size_t Distance(const std::string& left, const std::string& right) {
    const std::string from = UpperCase(left);
    const std::string to = UpperCase(right);
    // The distances between the beginning of `from` so far and each beginning of `to`.
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t changed = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string NearMissHint(const std::string& typed, const std::vector<std::string>& words) {
    // A third of the letters may be wrong, but one always.
    std::size_t nearest = std::max<std::size_t>(typed.size() / 3, 1) + 1;
    const std::string* found = nullptr;
    for (const std::string& word : words) {
        const std::size_t distance = Distance(typed, word);
        if (distance < nearest) {
            nearest = distance;
            found = &word;
        }
    }
    return found != nullptr ? " Did you mean '" + *found + "'?" : std::string();
}

}  // namespace krv::cli
