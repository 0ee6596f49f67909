#include "bench/shared/OfficeApplication.h"

#include <algorithm>
#include <utility>

#include "bench/shared/FileBytes.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

// As the add-in's command bar has them, in its order.
const std::vector<std::string> GeneratorCaptions{
    "Corvane TQL/KRV", "Connect", "Connected", "Settings", "PutData", "GetImage", "Help"};

}  // namespace

OfficeApplication::OfficeApplication(const OfficeTraits& traits)
    : m_traits(traits), m_cursor(traits.cursors.front()) {}

OfficeApplication::DocumentPointer OfficeApplication::Add() {
    std::string name;
    do {
        name = m_traits.newDocument + std::to_string(++m_added);
    } while (Find(name));
    return Take(NewDocument(name), false);
}

OfficeApplication::DocumentPointer OfficeApplication::Open(const std::string& path) {
    if (const DocumentPointer open = Find(FileNameOf(path))) {
        if (EqualIgnoringCase(open->FullName(), path)) {
            Activate(open);
            return open;
        }
        if (!m_traits.hasOneDocument) {
            throw NameIsTaken(open->Name());
        }
    }
    const DocumentPointer loaded = NewDocument({});
    loaded->Load(path);
    Take(loaded, true);
    Tell([&](OfficeObserver& observer) { observer.OnOpened(*loaded); });
    return loaded;
}

OfficeApplication::DocumentPointer OfficeApplication::NewDocument(const std::string& name) {
    return NewDocument(name, [this](OfficeChange change) { Notify(change); });
}

OfficeApplication::DocumentPointer OfficeApplication::Take(const DocumentPointer& document,
                                                           bool isFromFile) {
    const DocumentPointer before = m_active;
    m_documents.push_back(document);
    Tell([&](OfficeObserver& observer) { observer.OnAdded(document, isFromFile); });
    Activate(document);
    if (m_traits.hasOneDocument) {
        Close(before);
    }
    return document;
}

void OfficeApplication::Activate(const DocumentPointer& document) {
    if (document == m_active) {
        return;
    }
    const DocumentPointer before = std::exchange(m_active, document);
    if (before) {
        Tell([&](OfficeObserver& observer) { observer.OnDeactivate(before); });
    }
    if (document) {
        Tell([&](OfficeObserver& observer) { observer.OnActivate(document); });
    }
    Notify(OfficeChange::Documents);
}

void OfficeApplication::Close(const DocumentPointer& document) {
    const DocumentPointer kept = document;
    const auto found = std::find(m_documents.begin(), m_documents.end(), kept);
    if (found == m_documents.end()) {
        return;
    }
    // An observer of the deactivation still finds the document among the open ones.
    if (kept == m_active) {
        const bool isLast = found + 1 == m_documents.end();
        Activate(!isLast ? *(found + 1) : m_documents.size() > 1 ? *(found - 1) : nullptr);
    }
    std::erase(m_documents, kept);
    Notify(OfficeChange::Documents);
}

void OfficeApplication::SaveAs(OfficeDocument& document, const std::string& path) {
    const DocumentPointer other = Find(FileNameOf(path));
    if (other && other.get() != &document) {
        throw NameIsTaken(other->Name());
    }
    Tell([&](OfficeObserver& observer) { observer.OnSaving(document); });
    document.SaveAs(path);
}

bool OfficeApplication::IsKeptOpen(const DocumentPointer& document) {
    bool isKept = false;
    Tell([&](OfficeObserver& observer) { isKept = observer.OnClosing(document) || isKept; });
    return isKept;
}

OfficeApplication::BarPointer OfficeApplication::AddCommandBar(
    const std::string& name, const std::vector<std::string>& captions) {
    if (FindBar(name) != m_bars.end()) {
        throw Error(ErrorNumber::InvalidCall);
    }
    m_bars.push_back(
        std::make_shared<CommandBarModel>(name, captions, [this] { NoteBarChange(); }));
    NoteBarChange();
    return m_bars.back();
}

void OfficeApplication::AddGeneratorBar() {
    AddCommandBar(GeneratorBarName, GeneratorCaptions);
}

void OfficeApplication::RemoveCommandBar(const std::string& name) {
    const auto found = FindBar(name);
    if (found == m_bars.end()) {
        throw Error(ErrorNumber::InvalidCall);
    }
    m_bars.erase(found);
    NoteBarChange();
}

OfficeApplication::BarPointer OfficeApplication::CommandBar(const std::string& name) const {
    const auto found = FindBar(name);
    if (found == m_bars.end()) {
        throw Error(ErrorNumber::InvalidCall);
    }
    return *found;
}

std::vector<OfficeApplication::BarPointer>::const_iterator OfficeApplication::FindBar(
    const std::string& name) const {
    return std::find_if(m_bars.begin(), m_bars.end(), [&](const BarPointer& bar) {
        return EqualIgnoringCase(bar->Name(), name);
    });
}

void OfficeApplication::NoteBarChange() {
    m_isTemplateSaved = false;
    Notify(OfficeChange::CommandBars);
}

OfficeApplication::DocumentPointer OfficeApplication::Find(const std::string& name) const {
    const auto found = std::find_if(
        m_documents.begin(), m_documents.end(),
        [&](const DocumentPointer& document) { return EqualIgnoringCase(document->Name(), name); });
    return found == m_documents.end() ? nullptr : *found;
}

Error OfficeApplication::NameIsTaken(const std::string& name) const {
    const std::string kind = m_traits.kindOfFile;
    return m_traits.fileError(
        Error(ErrorNumber::PathFileAccess, "A " + kind + " named '" + name +
                                               "' is already open.  Two " + kind +
                                               "s can't have the same name, even if they are in "
                                               "different folders."));
}

void OfficeApplication::SetStatus(std::optional<std::string> text) {
    Change(m_status, text, OfficeChange::StatusBar);
}

void OfficeApplication::DisplayStatusBar(bool isDisplayed) {
    Change(m_isStatusBarDisplayed, isDisplayed, OfficeChange::StatusBar);
}

void OfficeApplication::SetCursor(std::int32_t cursor) {
    const auto& cursors = m_traits.cursors;
    if (std::find(cursors.begin(), cursors.end(), cursor) == cursors.end()) {
        throw m_traits.noSuchCursor();
    }
    Change(m_cursor, cursor, OfficeChange::Cursor);
}

void OfficeApplication::Notify(OfficeChange change) {
    Tell([change](OfficeObserver& observer) { observer.OnChanged(change); });
}

// Observers may come and go meanwhile.
void OfficeApplication::Tell(const std::function<void(OfficeObserver&)>& what) {
    const std::vector<OfficeObserver*> observers = m_observers;
    for (OfficeObserver* observer : observers) {
        what(*observer);
    }
}

}  // namespace krv::bench
