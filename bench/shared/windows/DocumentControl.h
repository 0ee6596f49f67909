// DocumentControl: which document the toolbar control belongs to. A document that is opened
// brings the control that it keeps, and saving it puts the control's properties into it. Where an
// application has one document, each gets a control, and without a document there is none. The
// control finds itself in the document, or on the sheet where documents have sheets. The
// user-interface thread's.
#pragma once

#include <memory>

#include "bench/shared/windows/GeneratorBand.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

class DocumentControl final : private OfficeObserver {
 public:
    // All outlive this. Observes the application from the start.
    DocumentControl(OfficeApplication& application, OfficeAutomation& automation,
                    GeneratorBand& band);
    DocumentControl(const DocumentControl&) = delete;
    DocumentControl& operator=(const DocumentControl&) = delete;
    ~DocumentControl() override { m_application.RemoveObserver(*this); }

    // Puts the control there for the active document, from what that keeps or as a new one.
    void Start();
    // The control of this document has changed since the document was opened or saved, and the
    // document's file keeps it.
    [[nodiscard]] bool IsUnsavedIn(const OfficeDocument& document) const;

 private:
    void OnChanged(OfficeChange change) override;
    void OnOpened(OfficeDocument& opened) override;
    void OnSaving(OfficeDocument& document) override;

    void PutFor(const std::shared_ptr<OfficeDocument>& document);
    // The control's present properties into the document that it belongs to.
    void Keep();

    OfficeApplication& m_application;
    OfficeAutomation& m_automation;
    GeneratorBand& m_band;
    std::weak_ptr<OfficeDocument> m_owner;
    bool m_isStarted = false;
};

}  // namespace krv::bench
