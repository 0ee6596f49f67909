#include "bench/shared/windows/OfficeAutomation.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"

namespace krv::bench {

OfficeAutomation::OfficeAutomation(OfficeApplication& application, ProgramWindow& window,
                                   DocumentObjects documentObjects)
    : m_application(application), m_window(window), m_documentObjects(documentObjects) {
    m_application.AddObserver(*this);
}

void OfficeAutomation::End() noexcept {
    if (!std::exchange(m_isRunning, false)) {
        return;
    }
    m_application.RemoveObserver(*this);
    m_events = nullptr;
    m_addIns.clear();
    m_objects.clear();
    m_applicationObject.Reset();
}

OfficeApplication& OfficeAutomation::Application() const {
    RequireRunning();
    return m_application;
}

ProgramWindow& OfficeAutomation::Window() const {
    RequireRunning();
    return m_window;
}

OfficeAutomation::Object OfficeAutomation::ObjectOf(
    const std::shared_ptr<OfficeDocument>& document) {
    if (!document) {
        return nullptr;
    }
    Object& object = m_objects[document.get()];
    if (!object) {
        object = m_documentObjects(shared_from_this(), document);
    }
    return object;
}

bool OfficeAutomation::Raise(OfficeEvent event, const std::shared_ptr<OfficeDocument>& document) {
    bool isCancelled = false;
    if (m_events) {
        m_events(event, ObjectOf(document), isCancelled);
    }
    return isCancelled;
}

void OfficeAutomation::OnActivate(const std::shared_ptr<OfficeDocument>& activated) {
    Raise(OfficeEvent::Activate, activated);
    Raise(OfficeEvent::WindowActivate, activated);
}

void OfficeAutomation::OnDeactivate(const std::shared_ptr<OfficeDocument>& deactivated) {
    Raise(OfficeEvent::WindowDeactivate, deactivated);
    Raise(OfficeEvent::Deactivate, deactivated);
}

void OfficeAutomation::OnAdded(const std::shared_ptr<OfficeDocument>& added, bool isFromFile) {
    Raise(isFromFile ? OfficeEvent::Open : OfficeEvent::New, added);
}

bool OfficeAutomation::OnClosing(const std::shared_ptr<OfficeDocument>& document) {
    return Raise(OfficeEvent::BeforeClose, document);
}

void OfficeAutomation::OnSaving(OfficeDocument& document) {
    const auto& open = m_application.Documents();
    const auto found = std::find_if(open.begin(), open.end(),
                                    [&](const auto& each) { return each.get() == &document; });
    if (found != open.end() && Raise(OfficeEvent::BeforeSave, *found)) {
        throw Error(ErrorNumber::CancelPressed, "The saving was cancelled.");
    }
}

void OfficeAutomation::OnChanged(OfficeChange change) {
    if (change == OfficeChange::Documents) {
        std::erase_if(m_objects, [this](const auto& entry) { return !IsOpen(entry.first); });
    }
}

std::shared_ptr<OfficeDocument> OfficeAutomation::RequireOpen(
    const std::weak_ptr<OfficeDocument>& document) const {
    RequireRunning();
    std::shared_ptr<OfficeDocument> found = document.lock();
    if (!IsOpen(found.get())) {
        throw Error(OfficeErrorNumber::ObjectRequired,
                    "The " + std::string(m_traits.kindOfFile) + " has been closed.");
    }
    return found;
}

bool OfficeAutomation::IsOpen(const OfficeDocument* document) const {
    const auto& open = m_application.Documents();
    return std::any_of(open.begin(), open.end(),
                       [&](const auto& each) { return each.get() == document; });
}

void OfficeAutomation::RequireRunning() const {
    if (!m_isRunning) {
        throw Error(OfficeErrorNumber::ObjectRequired, "The application has ended.");
    }
}

}  // namespace krv::bench
