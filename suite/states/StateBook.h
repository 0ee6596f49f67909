// StateBook: the list of named states, and the source that captures and restores them.
//
// Shared by the component that a document keeps and the control that shows it. One thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "suite/states/StateList.h"

namespace krv::suite {

// Where states come from and go to: the toolbar control, which knows the instrument. Each operation
// throws Error.
class SetupSource {
 public:
    virtual ~SetupSource() = default;
    virtual std::string Model() = 0;
    virtual std::string Version() = 0;
    virtual Value Capture() = 0;
    virtual void Restore(const Value& snapshot) = 0;
};

class StateBookObserver {
 public:
    virtual ~StateBookObserver() = default;
    virtual void StatesChanged() = 0;
};

class StateBook {
 public:
    // The clock gives the local time.
    explicit StateBook(std::function<DateValue()> clock) : m_clock(std::move(clock)) {}
    StateBook(const StateBook&) = delete;
    StateBook& operator=(const StateBook&) = delete;

    [[nodiscard]] const StateList& List() const noexcept { return m_list; }
    [[nodiscard]] bool HasSource() const noexcept { return m_source != nullptr; }
    // Null leaves the book without a source.
    void SetSource(std::shared_ptr<SetupSource> source);

    // Each throws the source's Error or the list's; the list then is as it was. Error 91 without a
    // source.
    void Capture(const std::string& name);
    void Restore(std::size_t index);
    void Rename(std::size_t index, const std::string& name);
    void Delete(std::size_t index);
    void Read(PropertyBag& bag);

    // The observer is called after each change; it is removed before it ends.
    void AddObserver(StateBookObserver& observer) { m_observers.push_back(&observer); }
    void RemoveObserver(StateBookObserver& observer);

 private:
    [[nodiscard]] std::shared_ptr<SetupSource> RequiredSource() const;
    void Changed();

    std::function<DateValue()> m_clock;
    StateList m_list;
    std::shared_ptr<SetupSource> m_source;
    std::vector<StateBookObserver*> m_observers;
};

}  // namespace krv::suite
