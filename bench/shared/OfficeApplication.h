// OfficeApplication: a bench application without its window: its open documents, of which one is
// active, its status bar and cursor, the command bar with the toolbar control, and add-ins.
// Its observers show it and pass its events on; one thread's.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/shared/CommandBarModel.h"
#include "bench/shared/OfficeDocument.h"
#include "bench/shared/OfficeTraits.h"

namespace krv::bench {

// The command bar with the toolbar control.
inline constexpr const char* GeneratorBarName = "TQL/KRV Signal Generator";

struct AddInEntry {
    std::string name;
    // Without a separator at the end.
    std::string path;
    bool isInstalled = true;
};

class OfficeObserver {
 public:
    virtual ~OfficeObserver() = default;
    virtual void OnActivate(const std::shared_ptr<OfficeDocument>& /*activated*/) {}
    virtual void OnDeactivate(const std::shared_ptr<OfficeDocument>& /*deactivated*/) {}
    virtual void OnChanged(OfficeChange /*change*/) {}
    // A file has been opened; its document is active.
    virtual void OnOpened(OfficeDocument& /*opened*/) {}
    // Time to put into the document what its file should keep. An Error ends the saving.
    virtual void OnSaving(OfficeDocument& /*document*/) {}
};

class OfficeApplication {
 public:
    using DocumentPointer = std::shared_ptr<OfficeDocument>;

    OfficeApplication(const OfficeApplication&) = delete;
    OfficeApplication& operator=(const OfficeApplication&) = delete;
    virtual ~OfficeApplication() = default;

    [[nodiscard]] const OfficeTraits& Traits() const { return m_traits; }
    // Observers outlive their registration.
    void AddObserver(OfficeObserver& observer) { m_observers.push_back(&observer); }
    void RemoveObserver(OfficeObserver& observer) { std::erase(m_observers, &observer); }

    [[nodiscard]] const std::vector<DocumentPointer>& Documents() const { return m_documents; }
    // Null when none is open.
    [[nodiscard]] const DocumentPointer& Active() const { return m_active; }
    // Each opens a document and activates it. Opening a file that is open already activates its
    // document; another file of the same name is an error, since a name must tell one document.
    DocumentPointer Add();
    DocumentPointer Open(const std::string& path);
    void Activate(const DocumentPointer& document);
    // The next document becomes active. Unsaved changes are given up.
    void Close(const DocumentPointer& document);
    // An error under the name of another open document.
    void SaveAs(OfficeDocument& document, const std::string& path);

    // What the status bar shows; without a text from outside it is the application's own, "Ready".
    [[nodiscard]] std::string StatusText() const { return m_status.value_or("Ready"); }
    [[nodiscard]] const std::optional<std::string>& GivenStatus() const { return m_status; }
    void SetStatus(std::optional<std::string> text);
    [[nodiscard]] bool IsStatusBarDisplayed() const { return m_isStatusBarDisplayed; }
    void DisplayStatusBar(bool isDisplayed);

    [[nodiscard]] std::int32_t Cursor() const { return m_cursor; }
    [[nodiscard]] bool IsWaiting() const { return m_cursor == m_traits.waitCursor; }
    // Throws the application's error for a number that is none of its cursors.
    void SetCursor(std::int32_t cursor);

    [[nodiscard]] CommandBarModel& GeneratorBar() { return m_generatorBar; }
    [[nodiscard]] std::vector<AddInEntry>& AddIns() { return m_addIns; }

 protected:
    explicit OfficeApplication(const OfficeTraits& traits);

    [[nodiscard]] virtual DocumentPointer NewDocument(const std::string& name,
                                                      OfficeDocument::Listener listener) const = 0;

    template <class Field, class Given>
    void Change(Field& field, const Given& value, OfficeChange change) {
        if (field != value) {
            field = value;
            Notify(change);
        }
    }

 private:
    [[nodiscard]] DocumentPointer NewDocument(const std::string& name);
    DocumentPointer Take(const DocumentPointer& document);
    [[nodiscard]] DocumentPointer Find(const std::string& name) const;
    [[nodiscard]] Error NameIsTaken(const std::string& name) const;
    void Notify(OfficeChange change);
    void Tell(const std::function<void(OfficeObserver&)>& what);

    const OfficeTraits& m_traits;
    std::vector<OfficeObserver*> m_observers;
    std::vector<DocumentPointer> m_documents;
    DocumentPointer m_active;
    std::int32_t m_added = 0;
    std::optional<std::string> m_status;
    bool m_isStatusBarDisplayed = true;
    std::int32_t m_cursor;
    CommandBarModel m_generatorBar;
    std::vector<AddInEntry> m_addIns;
};

}  // namespace krv::bench
