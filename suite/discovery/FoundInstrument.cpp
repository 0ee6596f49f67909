#include "suite/discovery/FoundInstrument.h"

#include <algorithm>
#include <string_view>

namespace krv::suite {
namespace {

// Stands in the order of text where the numbers in it come in theirs: of two numbers, the one with
// more digits comes later.
std::string OrderKey(std::string_view text) {
    std::string key;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_not_of("0123456789", at), text.size());
        const std::size_t count = std::max<std::size_t>(end - at, 1);
        if (end > at) {
            key += static_cast<char>(count);
        }
        key += text.substr(at, count);
        at += count;
    }
    return key;
}

}  // namespace

bool ComesBefore(const FoundInstrument& one, const FoundInstrument& other) {
    return one.place != other.place ? one.place < other.place
                                    : OrderKey(one.address) < OrderKey(other.address);
}

}  // namespace krv::suite
