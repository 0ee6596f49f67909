#include "common/NearMiss.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "common/Text.h"

namespace krv {
namespace {

// How many letters must be changed, added, left out or swapped with the next one to make one of the
// other; their case is none.
std::size_t Distance(std::string_view left, std::string_view right) {
    const std::string from = UpperCase(left);
    const std::string to = UpperCase(right);
    using Row = std::vector<std::size_t>;
    // The distances between the beginnings of `from`, the longest last, and each beginning of `to`.
    Row before;
    Row last;
    Row row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        before = std::exchange(last, row);
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t changed = last[j] + (from[i] == to[j] ? 0 : 1);
            row[j + 1] = std::min({changed, row[j] + 1, last[j + 1] + 1});
            if (i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j]) {
                row[j + 1] = std::min(row[j + 1], before[j - 1] + 1);
            }
        }
    }
    return row.back();
}

}  // namespace

std::string NearMissHint(std::string_view typed, const std::vector<std::string>& words) {
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

}  // namespace krv
