// OfficeApplication: a bench application without its window: its open documents, of which one is
// active, its status bar and cursor, its command bars and add-ins.
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

// The command bar that the toolbar control's adapter drives.
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
    // A new document, or one from a file, which isn't active yet.
    virtual void OnAdded(const std::shared_ptr<OfficeDocument>& /*added*/, bool /*isFromFile*/) {}
    // The user closes the document; true keeps it open.
    virtual bool OnClosing(const std::shared_ptr<OfficeDocument>& /*document*/) { return false; }
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

    // An observer wants the document to stay open.
    [[nodiscard]] bool IsKeptOpen(const DocumentPointer& document);

    using BarPointer = std::shared_ptr<CommandBarModel>;
    [[nodiscard]] const std::vector<BarPointer>& CommandBars() const { return m_bars; }
    // Each throws Error 5: when the name is taken, and when there is no such bar.
    BarPointer AddCommandBar(const std::string& name, const std::vector<std::string>& captions);
    void RemoveCommandBar(const std::string& name);
    [[nodiscard]] BarPointer CommandBar(const std::string& name) const;
    // The bar that the toolbar control's adapter drives, with its seven buttons, where no add-in
    // makes it.
    void AddGeneratorBar();
    [[nodiscard]] CommandBarModel& GeneratorBar() const { return *CommandBar(GeneratorBarName); }
    // Bars are kept in a template, which counts as changed by them.
    [[nodiscard]] bool IsTemplateSaved() const { return m_isTemplateSaved; }
    void SetTemplateSaved(bool isSaved) { m_isTemplateSaved = isSaved; }
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
    DocumentPointer Take(const DocumentPointer& document, bool isFromFile);
    void NoteBarChange();
    [[nodiscard]] std::vector<BarPointer>::const_iterator FindBar(const std::string& name) const;
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
    std::vector<BarPointer> m_bars;
    bool m_isTemplateSaved = true;
    std::vector<AddInEntry> m_addIns;
};

}  // namespace krv::bench
