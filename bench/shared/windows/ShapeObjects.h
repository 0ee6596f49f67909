// The automation objects of a document's pictures: the collection of its shapes, and each shape.
#pragma once

#include <memory>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewShapes(const std::shared_ptr<OfficeAutomation>& automation,
                                   const std::shared_ptr<OfficeDocument>& document);

}  // namespace krv::bench
