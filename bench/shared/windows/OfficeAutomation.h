// OfficeAutomation: what the automation objects of a bench application share. It leads them to the
// application while that runs; callers may hold objects longer, whose use then throws. The
// user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

// What the objects ask of the program's window; nothing happens where there is none.
class ProgramWindow {
 public:
    virtual ~ProgramWindow() = default;
    // While a cell is edited the application refuses all calls.
    [[nodiscard]] virtual bool IsEditing() const { return false; }
    virtual void Quit() {}
};

class OfficeAutomation final : public std::enable_shared_from_this<OfficeAutomation>,
                               private OfficeObserver {
 public:
    using Object = Microsoft::WRL::ComPtr<IDispatch>;
    // Makes the automation object of a document.
    using DocumentObjects = Object (*)(const std::shared_ptr<OfficeAutomation>& automation,
                                       const std::shared_ptr<OfficeDocument>& document);

    // Application and window outlive the call of End.
    OfficeAutomation(OfficeApplication& application, ProgramWindow& window,
                     DocumentObjects documentObjects);
    OfficeAutomation(const OfficeAutomation&) = delete;
    OfficeAutomation& operator=(const OfficeAutomation&) = delete;
    ~OfficeAutomation() override { End(); }

    // Lets go of the application and of all objects kept here.
    void End() noexcept;

    // Each throws Error 424 after the end.
    [[nodiscard]] OfficeApplication& Application() const;
    [[nodiscard]] ProgramWindow& Window() const;
    // Of this object's application, also after the end.
    [[nodiscard]] const OfficeTraits& Traits() const { return m_traits; }
    [[nodiscard]] bool IsBusy() const { return m_isRunning && m_window.IsEditing(); }

    void SetApplicationObject(IDispatch* object) { m_applicationObject = object; }
    // Null after the end.
    [[nodiscard]] IDispatch* ApplicationObject() const { return m_applicationObject.Get(); }
    // Hears of each document that becomes active, or no longer is, until the end.
    using Activation = std::function<void(const Object& document, bool isActive)>;
    void SetActivationListener(Activation listener) { m_activation = std::move(listener); }

    // One object for each open document, so that callers can compare them; null for null.
    [[nodiscard]] Object ObjectOf(const std::shared_ptr<OfficeDocument>& document);
    // Throws Error 424 when the document has been closed.
    [[nodiscard]] std::shared_ptr<OfficeDocument> RequireOpen(
        const std::weak_ptr<OfficeDocument>& document) const;

 private:
    void OnActivate(const std::shared_ptr<OfficeDocument>& activated) override;
    void OnDeactivate(const std::shared_ptr<OfficeDocument>& deactivated) override;
    void OnChanged(OfficeChange change) override;
    [[nodiscard]] bool IsOpen(const OfficeDocument* document) const;
    void RequireRunning() const;

    OfficeApplication& m_application;
    const OfficeTraits& m_traits = m_application.Traits();
    ProgramWindow& m_window;
    DocumentObjects m_documentObjects;
    bool m_isRunning = true;
    Object m_applicationObject;
    Activation m_activation;
    std::map<const OfficeDocument*, Object> m_objects;
};

}  // namespace krv::bench
