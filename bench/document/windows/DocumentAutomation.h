// DocumentAutomation: what the automation objects of krvdoc share: its document has one object, so
// that callers can compare them.
#pragma once

#include <memory>

#include "bench/document/DocumentApplication.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

class DocumentAutomation final : public OfficeAutomation,
                                 public std::enable_shared_from_this<DocumentAutomation> {
 public:
    // Both outlive the call of End.
    DocumentAutomation(DocumentApplication& application, ProgramWindow& window)
        : OfficeAutomation(application, window, "krvdoc"), m_application(application) {}

    void End() noexcept override;

    // Throws Error 424 after the end.
    [[nodiscard]] DocumentApplication& Application() const;
    // Throws Error 4248 when no document is open.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ActiveDocumentObject();

 private:
    DocumentApplication& m_application;
    std::weak_ptr<Document> m_document;
    Microsoft::WRL::ComPtr<IDispatch> m_documentObject;
};

// An object of krvdoc.
template <class Object>
class DocumentModelObject : public OfficeObject<DocumentAutomation, Object> {
 public:
    using OfficeObject<DocumentAutomation, Object>::OfficeObject;

 protected:
    [[nodiscard]] DocumentApplication& Application() const {
        return this->Automation()->Application();
    }
};

}  // namespace krv::bench
