// The automation objects of documents, their text and their pictures, shaped like Word's. Objects
// of a document that has been closed throw Error 424.
#pragma once

#include <memory>

#include "bench/document/windows/DocumentAutomation.h"

namespace krv::bench {

[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> NewDocumentObject(
    const std::shared_ptr<DocumentAutomation>& automation,
    const std::shared_ptr<Document>& document);

// The open documents, of which there is at most one.
[[nodiscard]] _variant_t NewDocuments(const std::shared_ptr<DocumentAutomation>& automation);

// The pictures of a document.
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> NewShapes(
    const std::shared_ptr<DocumentAutomation>& automation, const std::weak_ptr<Document>& document);

// Throws Error 424 when it has been closed.
[[nodiscard]] std::shared_ptr<Document> RequireOpen(const DocumentApplication& application,
                                                    const std::weak_ptr<Document>& document);

}  // namespace krv::bench
