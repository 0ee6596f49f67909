#include "suite/states/StateBook.h"

#include "common/Error.h"

namespace krv::suite {

void StateBook::SetSource(std::shared_ptr<SetupSource> source) {
    m_source = std::move(source);
    Changed();
}

// The name is checked first: a refusal after a long transfer would come too late.
void StateBook::Capture(const std::string& name) {
    const auto source = RequiredSource();
    NamedState state;
    state.name = m_list.ValidName(name);
    state.model = source->Model();
    state.version = source->Version();
    state.snapshot = source->Capture();
    state.captured = m_clock();
    m_list.Add(std::move(state));
    Changed();
}

void StateBook::Restore(std::size_t index) {
    const auto source = RequiredSource();
    // A copy, since the source may process events that change the list.
    const Value snapshot = m_list.At(index).snapshot;
    source->Restore(snapshot);
}

void StateBook::Rename(std::size_t index, const std::string& name) {
    m_list.Rename(index, name);
    Changed();
}

void StateBook::Delete(std::size_t index) {
    m_list.Delete(index);
    Changed();
}

void StateBook::Read(PropertyBag& bag) {
    m_list.Read(bag);
    Changed();
}

void StateBook::RemoveObserver(StateBookObserver& observer) {
    std::erase(m_observers, &observer);
}

std::shared_ptr<SetupSource> StateBook::RequiredSource() const {
    if (!m_source) {
        throw Error(ErrorNumber::ObjectNotSet,
                    "No instrument control is there to capture states from or restore them to.");
    }
    return m_source;
}

void StateBook::Changed() {
    const auto observers = m_observers;
    for (StateBookObserver* const observer : observers) {
        observer->StatesChanged();
    }
}

}  // namespace krv::suite
