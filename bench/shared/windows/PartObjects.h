// The automation objects of a document's custom XML parts.
#pragma once

#include <memory>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewXmlParts(const std::shared_ptr<OfficeAutomation>& automation,
                                     const std::shared_ptr<OfficeDocument>& document);

}  // namespace krv::bench
