// DocumentControl: hosts the toolbar control for the document that is open, from the properties
// that the document keeps, and puts the control's into it when it is saved. Without a document
// there is no control. The user-interface thread's.
#pragma once

#include <memory>

#include "bench/document/DocumentApplication.h"
#include "bench/document/windows/DocumentAutomation.h"
#include "bench/shared/windows/GeneratorBand.h"

namespace krv::bench {

class DocumentControl final : private DocumentObserver {
 public:
    // All outlive this. Observes the application from the start.
    DocumentControl(DocumentApplication& application, DocumentAutomation& automation,
                    GeneratorBand& band);
    DocumentControl(const DocumentControl&) = delete;
    DocumentControl& operator=(const DocumentControl&) = delete;
    ~DocumentControl() override;

    void Start();

 private:
    void OnChanged(DocumentChange change) override;
    void OnSaving(Document& document) override;
    void Host();

    DocumentApplication& m_application;
    DocumentAutomation& m_automation;
    GeneratorBand& m_band;
    bool m_isStarted = false;
};

}  // namespace krv::bench
