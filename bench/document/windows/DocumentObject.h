// The automation object of a document, with its pictures, shaped like Word's.
#pragma once

#include <memory>

#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

// The document is a Document.
[[nodiscard]] OfficeAutomation::Object NewTextDocumentObject(
    const std::shared_ptr<OfficeAutomation>& automation,
    const std::shared_ptr<OfficeDocument>& document);

}  // namespace krv::bench
