// A number of things, in words.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krv::formats {

// "1 point", "2 points".
[[nodiscard]] inline std::string Counted(std::uint64_t count, std::string_view thing) {
    return std::to_string(count) + ' ' + std::string(thing) + (count == 1 ? "" : "s");
}

}  // namespace krv::formats
