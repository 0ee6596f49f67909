// DocumentApplication: the document application without its window: its one document, if one is
// open, and the cursor. Its observers show it; one thread's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bench/document/Document.h"
#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

// The constants of the system's cursor.
enum class SystemCursor : std::int32_t { Wait = 0, TextBeam = 1, Normal = 2, Arrow = 3 };

enum class DocumentChange : std::uint8_t {
    // Another document is open, or none.
    Document,
    Text,
    Pictures,
    // The document has been saved.
    File,
    StatusBar,
    Cursor,
    CommandBars
};

class DocumentObserver {
 public:
    virtual ~DocumentObserver() = default;
    virtual void OnChanged(DocumentChange change) = 0;
    // Time to put into the document what its file should keep. An Error ends the saving.
    virtual void OnSaving(Document& /*document*/) {}
};

class DocumentApplication final : public OfficeApplication {
 public:
    // The meter outlives the application.
    explicit DocumentApplication(PictureMeter& meter) : m_meter(meter) {}

    // Observers outlive their registration.
    void AddObserver(DocumentObserver& observer);
    void RemoveObserver(DocumentObserver& observer);

    // Null when none is open.
    [[nodiscard]] const std::shared_ptr<Document>& OpenDocument() const { return m_document; }
    // Throws Error 4248 when none is open.
    [[nodiscard]] std::shared_ptr<Document> ActiveDocument() const;
    // Each takes the place of the document that was open, whose changes are given up.
    std::shared_ptr<Document> Add();
    std::shared_ptr<Document> Open(const std::string& path);
    void Close();
    // Throws Error 4248 when the document isn't open.
    void Save(Document& document, const std::string& path);

    [[nodiscard]] SystemCursor Cursor() const { return m_cursor; }
    // Throws Error 4608 for a number that is none of the cursors.
    void SetCursor(std::int32_t cursor);

 private:
    void OnStatusBarChanged() override { Notify(DocumentChange::StatusBar); }
    void OnCommandBarsChanged() override { Notify(DocumentChange::CommandBars); }
    void Take(std::shared_ptr<Document> document);
    [[nodiscard]] Document::Listener PartListener();
    void Notify(DocumentChange change);

    PictureMeter& m_meter;
    std::vector<DocumentObserver*> m_observers;
    std::shared_ptr<Document> m_document;
    std::int32_t m_documentsAdded = 0;
    SystemCursor m_cursor = SystemCursor::Normal;
};

}  // namespace krv::bench
