#include "bench/document/DocumentApplication.h"

#include <utility>

#include "bench/document/DocumentErrors.h"

namespace krv::bench {

void DocumentApplication::AddObserver(DocumentObserver& observer) {
    m_observers.push_back(&observer);
}

void DocumentApplication::RemoveObserver(DocumentObserver& observer) {
    std::erase(m_observers, &observer);
}

std::shared_ptr<Document> DocumentApplication::ActiveDocument() const {
    if (!m_document) {
        throw NoDocumentOpen();
    }
    return m_document;
}

std::shared_ptr<Document> DocumentApplication::Add() {
    const std::string name = "Document" + std::to_string(++m_documentsAdded);
    Take(std::make_shared<Document>(name, m_meter, PartListener()));
    return m_document;
}

std::shared_ptr<Document> DocumentApplication::Open(const std::string& path) {
    Take(Document::Load(path, m_meter, PartListener()));
    return m_document;
}

void DocumentApplication::Close() {
    if (m_document) {
        Take(nullptr);
    }
}

void DocumentApplication::Take(std::shared_ptr<Document> document) {
    m_document = std::move(document);
    Notify(DocumentChange::Document);
}

// Objects of callers may keep a document that is no longer shown.
Document::Listener DocumentApplication::PartListener() {
    return [this](DocumentPart part) {
        switch (part) {
            case DocumentPart::Text:
                return Notify(DocumentChange::Text);
            case DocumentPart::Pictures:
                return Notify(DocumentChange::Pictures);
            case DocumentPart::File:
                return Notify(DocumentChange::File);
        }
    };
}

void DocumentApplication::Save(Document& document, const std::string& path) {
    if (&document != m_document.get()) {
        throw NoDocumentOpen();
    }
    const std::vector<DocumentObserver*> observers = m_observers;
    for (DocumentObserver* observer : observers) {
        observer->OnSaving(document);
    }
    document.SaveAs(path);
}

void DocumentApplication::SetCursor(std::int32_t cursor) {
    if (cursor < static_cast<std::int32_t>(SystemCursor::Wait) ||
        cursor > static_cast<std::int32_t>(SystemCursor::Arrow)) {
        throw ValueOutOfRange();
    }
    if (m_cursor != static_cast<SystemCursor>(cursor)) {
        m_cursor = static_cast<SystemCursor>(cursor);
        Notify(DocumentChange::Cursor);
    }
}

// Observers may come and go meanwhile.
void DocumentApplication::Notify(DocumentChange change) {
    const std::vector<DocumentObserver*> observers = m_observers;
    for (DocumentObserver* observer : observers) {
        observer->OnChanged(change);
    }
}

}  // namespace krv::bench
