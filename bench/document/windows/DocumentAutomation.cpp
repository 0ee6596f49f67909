#include "bench/document/windows/DocumentAutomation.h"

#include "bench/document/windows/DocumentObjects.h"

namespace krv::bench {

void DocumentAutomation::End() noexcept {
    m_documentObject.Reset();
    OfficeAutomation::End();
}

DocumentApplication& DocumentAutomation::Application() const {
    RequireRunning();
    return m_application;
}

Microsoft::WRL::ComPtr<IDispatch> DocumentAutomation::ActiveDocumentObject() {
    const std::shared_ptr<Document> active = Application().ActiveDocument();
    if (!m_documentObject || m_document.lock() != active) {
        m_documentObject = NewDocumentObject(shared_from_this(), active);
        m_document = active;
    }
    return m_documentObject;
}

}  // namespace krv::bench
