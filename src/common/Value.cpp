#include "common/Value.h"

#include <limits>

namespace krv {

std::optional<std::size_t> ElementCount(std::span<const ArrayDimension> dimensions) noexcept {
    std::size_t count = 1;
    for (const ArrayDimension& dimension : dimensions) {
        if (dimension.count != 0 &&
            count > std::numeric_limits<std::uint32_t>::max() / dimension.count) {
            return std::nullopt;
        }
        count *= dimension.count;
    }
    return count;
}

bool HasItsShape(const ArrayValue& array) noexcept {
    return !array.dimensions.empty() && array.dimensions.size() <= ValueLimit::Dimensions &&
           ElementCount(array.dimensions) == array.elements.size();
}

}  // namespace krv
