// The automation objects of the collection of documents, and of the window that shows them.
#pragma once

#include <memory>

#include "bench/shared/windows/MemberCall.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

[[nodiscard]] _variant_t NewDocuments(const std::shared_ptr<OfficeAutomation>& automation);
// Nothing where no document is open.
[[nodiscard]] _variant_t NewActiveWindow(const std::shared_ptr<OfficeAutomation>& automation);

}  // namespace krv::bench
