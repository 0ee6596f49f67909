#include "bench/document/windows/DocumentControl.h"

#include <span>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"

namespace krv::bench {

DocumentControl::DocumentControl(DocumentApplication& application, DocumentAutomation& automation,
                                 GeneratorBand& band)
    : m_application(application), m_automation(automation), m_band(band) {
    m_application.AddObserver(*this);
}

DocumentControl::~DocumentControl() {
    m_application.RemoveObserver(*this);
}

void DocumentControl::Start() {
    m_isStarted = true;
    Host();
}

void DocumentControl::OnChanged(DocumentChange change) {
    if (change == DocumentChange::Document && m_isStarted) {
        Host();
    }
}

void DocumentControl::Host() {
    const auto document = m_application.OpenDocument();
    if (!document) {
        m_band.ReleaseControl();
        return;
    }
    IDispatch* const application = m_automation.ApplicationObject();
    const auto container = m_automation.ActiveDocumentObject();
    MemoryPropertyBag saved;
    bool isSaved = false;
    try {
        if (const auto& contents = document->ControlProperties()) {
            saved.SetContents(std::as_bytes(std::span(*contents)));
            isSaved = true;
        }
    } catch (const Error& error) {
        // The section was intact, so that another program wrote this.
        m_application.SetStatus("The toolbar's settings in \"" + document->Name() +
                                "\" can't be used.  " + error.Description());
    }
    m_band.HostControl(application, container.Get(), isSaved ? &saved : nullptr);
}

void DocumentControl::OnSaving(Document& document) {
    if (m_band.Control() != nullptr) {
        const auto contents = m_band.Control()->Save().Contents();
        document.SetControlProperties(
            std::string(reinterpret_cast<const char*>(contents.data()), contents.size()));
    }
}

}  // namespace krv::bench
