// DocumentApplication: the document application without its window. It has one document open, or
// none.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "bench/document/Document.h"
#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

class DocumentApplication final : public OfficeApplication {
 public:
    DocumentApplication() : OfficeApplication(DocumentTraits()) {}

    // Null when none is open.
    [[nodiscard]] std::shared_ptr<Document> OpenDocument() const {
        return std::static_pointer_cast<Document>(Active());
    }

 private:
    [[nodiscard]] DocumentPointer NewDocument(const std::string& name,
                                              OfficeDocument::Listener listener) const override {
        return std::make_shared<Document>(name, std::move(listener));
    }
};

}  // namespace krv::bench
