// StatePanel: the instrument-state control without its window: the selection, which actions are
// possible, and the texts for the user.
//
// The window passes the user's actions on and shows the panel at each PanelChanged. A failed action
// is reported and leaves every state as it was.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "suite/states/StateBook.h"

namespace krv::suite {

// The window that shows the panel and owns it.
class StatePanelFace {
 public:
    virtual ~StatePanelFace() = default;
    // Shows the panel as it is now.
    virtual void PanelChanged() = 0;
    virtual void Report(const std::string& text) = 0;
    [[nodiscard]] virtual bool Confirm(const std::string& question) = 0;
    // Shows the hourglass while an action runs.
    virtual void SetBusy(bool busy) = 0;
};

class StatePanel final : private StateBookObserver {
 public:
    explicit StatePanel(StatePanelFace& face) : m_face(face) {}
    StatePanel(const StatePanel&) = delete;
    StatePanel& operator=(const StatePanel&) = delete;
    ~StatePanel() override;

    // Null shows none.
    void Show(std::shared_ptr<StateBook> book);
    [[nodiscard]] const std::shared_ptr<StateBook>& Book() const noexcept { return m_book; }

    [[nodiscard]] const std::vector<NamedState>& States() const noexcept;
    [[nodiscard]] const std::optional<std::size_t>& Selected() const noexcept { return m_selected; }
    // The name that the next captured state gets.
    [[nodiscard]] const std::string& NewName() const noexcept { return m_newName; }
    [[nodiscard]] bool CanCapture() const;
    [[nodiscard]] bool CanRestore() const;
    [[nodiscard]] bool CanRenameAndDelete() const { return m_selected.has_value(); }
    // One line that says what there is to do or what was done last.
    [[nodiscard]] std::string Status() const;

    // --- the user's actions; one that isn't possible does nothing
    // ---------------------------------
    void Select(std::optional<std::size_t> index);
    void EnterName(const std::string& name);
    void Capture();
    void Restore();
    // False when the name is refused.
    bool Rename(const std::string& name);
    // Asks first.
    void Delete();

 private:
    void StatesChanged() override;
    template <class Work>
    bool Attempt(const char* failure, Work&& work);

    StatePanelFace& m_face;
    std::shared_ptr<StateBook> m_book;
    std::optional<std::size_t> m_selected;
    std::string m_newName;
    std::string m_lastAction;
    bool m_isWorking = false;
};

}  // namespace krv::suite
