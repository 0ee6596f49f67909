#include "windows/addin/DocumentControls.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/addin/DocumentParts.h"
#include "windows/automation/Query.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

bool IsSame(const LateBound& one, const LateBound& other) {
    return Query<IUnknown>(one.Object()).Get() == Query<IUnknown>(other.Object()).Get();
}

}  // namespace

DocumentControls::DocumentControls(LateBound application, const HostTraits& traits,
                                   std::function<void()> onView)
    : m_application(std::move(application)), m_traits(traits), m_onView(std::move(onView)) {}

SitedControl* DocumentControls::Active() const {
    return m_active && m_active->control && m_active->control->IsThere() ? m_active->control.get()
                                                                         : nullptr;
}

void DocumentControls::Follow() {
    DropClosed();
    const LateBound document = ActiveDocumentOf(m_application, m_traits);
    if (!document) {
        m_active.reset();
        return;
    }
    const auto before = m_active;
    m_active = Find(document);
    if (!m_active) {
        m_active = std::make_shared<Entry>(Entry{document, nullptr});
        m_entries.push_back(m_active);
    }
    const HWND window = ActiveWindowOf(m_application, m_traits);
    if (SitedControl* const control = Active()) {
        control->MoveTo(window);
        if (m_traits.needsActivation && before != m_active) {
            control->TellActive();
        }
    } else {
        PutControl(*m_active, window);
    }
}

std::shared_ptr<DocumentControls::Entry> DocumentControls::Find(const LateBound& document) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const auto& entry) {
        return IsSame(entry->document, document);
    });
    return found != m_entries.end() ? *found : nullptr;
}

void DocumentControls::DropClosed() {
    const LateBound open = m_application.GetObject(m_traits.documents);
    std::vector<LateBound> documents;
    for (long position = open.GetLong(L"Count"); position > 0; --position) {
        documents.push_back(
            open.CallObject(L"Item", {ToVariant(static_cast<std::int32_t>(position))}));
    }
    const auto isClosed = [&](const auto& entry) {
        return std::none_of(documents.begin(), documents.end(), [&](const LateBound& document) {
            return IsSame(document, entry->document);
        });
    };
    // The controls go at the end, when nothing here is being changed any more.
    std::vector<std::shared_ptr<Entry>> closed;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(closed), isClosed);
    std::erase_if(m_entries, isClosed);
}

// Starting a control may show messages, and let the host close the document meanwhile.
void DocumentControls::PutControl(Entry& entry, HWND window) {
    // The one that went with its window had what the document may not keep yet.
    auto saved = entry.control ? std::move(entry.control->Last()) : KeptFor(entry.document);
    const bool isNew = entry.kept.empty();
    entry.control.reset();
    auto control = std::make_unique<SitedControl>(
        SitedControl::Place{m_application, m_traits, entry.document, window},
        saved ? &*saved : nullptr, m_onView);
    entry.control = std::move(control);
    if (const auto contents = entry.control->Save().Contents(); isNew) {
        entry.kept = contents;
    } else {
        entry.isDue = true;
    }
}

std::optional<MemoryPropertyBag> DocumentControls::KeptFor(const LateBound& document) {
    DocumentParts::Kept kept;
    if (const auto failure = FailureOf([&] { kept = DocumentParts(document).Read(); })) {
        // An application without such parts keeps nothing.
        if (IsBusy(*failure)) {
            throw Error(*failure);
        }
    }
    if (!kept.damage.empty()) {
        m_notice = "The toolbar's settings in \"" + document.GetText(L"Name") +
                   "\" can't be used, and no instrument is connected.  " + kept.damage +
                   "  They stay in the document.";
    }
    return std::move(kept.bag);
}

bool DocumentControls::NoteStates(const ButtonStates& states) {
    return m_active && std::exchange(m_active->states, states) != states;
}

const ButtonStates* DocumentControls::StatesIn(const LateBound& window) const {
    const auto entry = Find(window.GetObject(m_traits.windowDocument));
    return entry && entry->control && entry->control->IsThere() ? &entry->states : nullptr;
}

void DocumentControls::Keep() {
    const auto entries = m_entries;
    for (const auto& entry : entries) {
        Keep(*entry);
    }
}

void DocumentControls::KeepIn(IDispatch* document) {
    if (const auto entry = Find(LateBound(document))) {
        Keep(*entry);
    }
}

void DocumentControls::Keep(Entry& entry) {
    if (!entry.control || !entry.control->IsThere() || !(entry.isDue || entry.control->IsDirty())) {
        return;
    }
    entry.isDue = true;
    const auto contents = entry.control->Save().Contents();
    if (contents != entry.kept) {
        DocumentParts(entry.document).Write(contents);
        entry.kept = contents;
    }
    entry.isDue = false;
}

}  // namespace krv::windows
