#include "common/BagFormat.h"

#include <algorithm>
#include <string_view>

namespace krv::bag {

// Sorted rather than hashed: no choice of names makes this slow.
bool HasNameTwice(std::span<const BagEntry> entries) {
    std::vector<std::string_view> names;
    names.reserve(entries.size());
    for (const BagEntry& entry : entries) {
        names.push_back(entry.first);
    }
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

}  // namespace krv::bag
