#include "suite/states/StatePanel.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"

namespace krv::suite {
namespace {

std::string InQuotes(const std::string& name) {
    return '"' + name + '"';
}

}  // namespace

StatePanel::~StatePanel() {
    if (m_book) {
        m_book->RemoveObserver(*this);
    }
}

void StatePanel::Show(std::shared_ptr<StateBook> book) {
    if (m_book) {
        m_book->RemoveObserver(*this);
    }
    m_book = std::move(book);
    m_selected.reset();
    m_lastAction.clear();
    m_newName.clear();
    if (m_book) {
        m_book->AddObserver(*this);
        m_newName = m_book->List().FreeName();
        if (!States().empty()) {
            m_selected = 0;
        }
    }
    m_face.PanelChanged();
}

const std::vector<NamedState>& StatePanel::States() const noexcept {
    static const std::vector<NamedState> none;
    return m_book ? m_book->List().States() : none;
}

bool StatePanel::CanCapture() const {
    return !m_isWorking && m_book && m_book->HasSource() && !TrimBlanks(m_newName).empty();
}

bool StatePanel::CanRestore() const {
    return !m_isWorking && m_selected && m_book->HasSource();
}

std::string StatePanel::Status() const {
    if (!m_book || !m_book->HasSource()) {
        return "There is no instrument control to capture states from.";
    }
    if (!m_lastAction.empty()) {
        return m_lastAction;
    }
    return States().empty() ? "Enter a name and press Capture to keep the instrument's state."
                            : std::string();
}

void StatePanel::Select(std::optional<std::size_t> index) {
    if (index && *index >= States().size()) {
        index.reset();
    }
    if (m_selected != index) {
        m_selected = index;
        m_face.PanelChanged();
    }
}

void StatePanel::EnterName(const std::string& name) {
    m_newName = name;
    m_face.PanelChanged();
}

// Runs an action that may fail, and reports its failure. Only one runs at a time, since an action
// may process events.
template <class Work>
bool StatePanel::Attempt(const char* failure, Work&& work) {
    const auto book = m_book;
    m_isWorking = true;
    m_lastAction.clear();
    m_face.SetBusy(true);
    const auto trapped = FailureOf([&] { work(*book); });
    m_isWorking = false;
    m_face.SetBusy(false);
    m_face.PanelChanged();
    if (trapped) {
        const std::string reason = trapped->Description();
        m_face.Report(failure + std::string(CrLf) +
                      (reason.empty() ? StandardDescription(trapped->Number()) : reason));
    }
    return !trapped;
}

void StatePanel::Capture() {
    if (!CanCapture()) {
        return;
    }
    const bool captured = Attempt("The state has not been captured.",
                                  [this](StateBook& book) { book.Capture(m_newName); });
    if (captured && !States().empty()) {
        m_selected = States().size() - 1;
        m_lastAction = "Captured " + InQuotes(States().back().name) + ".";
        m_newName = m_book->List().FreeName();
        m_face.PanelChanged();
    }
}

// The source shows failures of its own; only others are reported here.
void StatePanel::Restore() {
    if (!CanRestore()) {
        return;
    }
    const std::size_t index = *m_selected;
    Attempt("The state has not been restored.", [index](StateBook& book) { book.Restore(index); });
}

bool StatePanel::Rename(const std::string& name) {
    if (!CanRenameAndDelete() || m_isWorking) {
        return false;
    }
    const std::size_t index = *m_selected;
    return Attempt("The state has not been renamed.",
                   [&](StateBook& book) { book.Rename(index, name); });
}

void StatePanel::Delete() {
    if (!CanRenameAndDelete() || m_isWorking) {
        return;
    }
    const std::size_t index = *m_selected;
    const std::string name = States()[index].name;
    if (!m_face.Confirm("Delete the state " + InQuotes(name) + "?")) {
        return;
    }
    // The list may have changed while the question was open.
    if (index >= States().size() || States()[index].name != name) {
        return;
    }
    if (Attempt("The state has not been deleted.",
                [index](StateBook& book) { book.Delete(index); })) {
        m_lastAction = "Deleted " + InQuotes(name) + ".";
        m_face.PanelChanged();
    }
}

// When the last state is deleted the one before it is selected.
void StatePanel::StatesChanged() {
    if (States().empty()) {
        m_selected.reset();
    } else if (m_selected && *m_selected >= States().size()) {
        m_selected = States().size() - 1;
    }
    m_face.PanelChanged();
}

}  // namespace krv::suite
