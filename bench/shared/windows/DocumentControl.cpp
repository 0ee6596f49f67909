#include "bench/shared/windows/DocumentControl.h"

#include <optional>
#include <span>
#include <string>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"
#include "windows/automation/LateBound.h"

namespace krv::bench {

DocumentControl::DocumentControl(OfficeApplication& application, OfficeAutomation& automation,
                                 GeneratorBand& band)
    : m_application(application), m_automation(automation), m_band(band) {
    m_application.AddObserver(*this);
}

void DocumentControl::Start() {
    m_isStarted = true;
    PutFor(m_application.Active());
}

void DocumentControl::OnChanged(OfficeChange change) {
    if (m_isStarted && change == OfficeChange::Documents && m_application.Traits().hasOneDocument &&
        m_owner.lock() != m_application.Active()) {
        PutFor(m_application.Active());
    }
}

void DocumentControl::OnOpened(OfficeDocument& opened) {
    if (!opened.Notice().empty()) {
        m_application.SetStatus(opened.Notice());
    }
    if (m_isStarted && opened.ControlProperties() && m_owner.lock().get() != &opened) {
        Keep();
        PutFor(m_application.Active());
    }
}

void DocumentControl::PutFor(const std::shared_ptr<OfficeDocument>& document) {
    m_owner = document;
    if (!document) {
        m_band.ReleaseControl();
        return;
    }
    std::optional<MemoryPropertyBag> saved;
    if (const auto& properties = document->ControlProperties()) {
        try {
            saved.emplace().SetContents(std::as_bytes(std::span(*properties)));
        } catch (const Error& error) {
            // The section was intact, so that another program wrote this.
            saved.reset();
            m_application.SetStatus("The toolbar's settings in \"" + document->Name() +
                                    "\" can't be used.  " + error.Description());
        }
    }
    const windows::LateBound whole(m_automation.ObjectOf(document).Get());
    const windows::LateBound container =
        m_application.Traits().hasSheets ? whole.GetObject(L"ActiveSheet") : whole;
    m_band.PutControl(m_automation.ApplicationObject(), container.Object(),
                      saved ? &*saved : nullptr);
}

void DocumentControl::OnSaving(OfficeDocument& document) {
    if (&document == m_owner.lock().get()) {
        Keep();
    }
}

void DocumentControl::Keep() {
    const auto owner = m_owner.lock();
    if (owner && m_band.Control() != nullptr) {
        const auto contents = m_band.Control()->Save().Contents();
        owner->SetControlProperties(
            {reinterpret_cast<const char*>(contents.data()), contents.size()});
    }
}

bool DocumentControl::IsUnsavedIn(const OfficeDocument& document) const {
    return &document == m_owner.lock().get() && document.KeepsControl() &&
           m_band.Control() != nullptr && m_band.Control()->IsDirty();
}

}  // namespace krv::bench
