// OfficeAutomation: what the automation objects of a bench application share. It leads them to the
// application while that runs; callers may hold objects longer, whose use then throws. The
// user-interface thread's.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>
#include <wrl/client.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

class ComAddIn;

// What the objects ask of the program's window; nothing happens where there is none.
class ProgramWindow {
 public:
    virtual ~ProgramWindow() = default;
    // While a cell is edited the application refuses all calls.
    [[nodiscard]] virtual bool IsEditing() const { return false; }
    virtual void Quit() {}
    // The window that shows the documents.
    [[nodiscard]] virtual HWND MainHandle() const { return nullptr; }
};

// What an application tells those who have subscribed to its events.
enum class OfficeEvent : std::uint8_t {
    New,
    Open,
    Activate,
    Deactivate,
    WindowActivate,
    WindowDeactivate,
    BeforeClose,
    BeforeSave
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
    // Hears of each event until the end; the receivers of a BeforeClose or BeforeSave may cancel
    // it.
    using Events =
        std::function<void(OfficeEvent event, const Object& document, bool& isCancelled)>;
    void SetEventListener(Events listener) { m_events = std::move(listener); }

    // The application's COM add-ins.
    using AddInList = std::vector<std::shared_ptr<ComAddIn>>;
    void SetComAddIns(AddInList addIns) { m_addIns = std::move(addIns); }
    [[nodiscard]] const AddInList& AddIns() const { return m_addIns; }

    // One object for each open document, so that callers can compare them; null for null.
    [[nodiscard]] Object ObjectOf(const std::shared_ptr<OfficeDocument>& document);
    // Throws Error 424 when the document has been closed.
    [[nodiscard]] std::shared_ptr<OfficeDocument> RequireOpen(
        const std::weak_ptr<OfficeDocument>& document) const;

 private:
    void OnActivate(const std::shared_ptr<OfficeDocument>& activated) override;
    void OnDeactivate(const std::shared_ptr<OfficeDocument>& deactivated) override;
    void OnAdded(const std::shared_ptr<OfficeDocument>& added, bool isFromFile) override;
    bool OnClosing(const std::shared_ptr<OfficeDocument>& document) override;
    void OnSaving(OfficeDocument& document) override;
    void OnChanged(OfficeChange change) override;
    // True when a receiver has cancelled what follows.
    bool Raise(OfficeEvent event, const std::shared_ptr<OfficeDocument>& document);
    [[nodiscard]] bool IsOpen(const OfficeDocument* document) const;
    void RequireRunning() const;

    OfficeApplication& m_application;
    const OfficeTraits& m_traits = m_application.Traits();
    ProgramWindow& m_window;
    DocumentObjects m_documentObjects;
    bool m_isRunning = true;
    Object m_applicationObject;
    Events m_events;
    AddInList m_addIns;
    std::map<const OfficeDocument*, Object> m_objects;
};

}  // namespace krv::bench
