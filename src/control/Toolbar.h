// Toolbar: the control's own seven buttons, as state and behaviour without a window.
//
// A host adapter sees it as a command bar and sets its buttons like the host's own. The front draws
// the buttons, passes the user's clicks on and is notified of each change.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ports/office/CommandBar.h"

namespace krv::control {

struct ToolbarButton {
    // The button's name, which never changes.
    std::string Key;
    // The name of its picture.
    std::string Image;
    std::string ToolTipText;
    bool Enabled = true;
    bool Visible = true;
};

class Toolbar final : public ports::CommandBar, public std::enable_shared_from_this<Toolbar> {
 public:
    Toolbar();
    ~Toolbar() override;

    // The new button's key is its picture's name and its tool tip, too.
    void AddButton(const std::string& key);
    [[nodiscard]] std::size_t ButtonCount() const noexcept { return m_buttons.size(); }
    // Positions count from 0 here.
    [[nodiscard]] const ToolbarButton& Button(std::size_t index) const;

    // The user clicks a button. Returns false, and does nothing, for one that is hidden or disabled
    // and for a position without a button.
    bool Click(std::size_t index);

    // Called with the key of the clicked button.
    std::function<void(const std::string&)> OnButtonClick;
    // Called after a button has really changed.
    std::function<void(std::size_t index)> OnChange;

    std::int32_t ControlCount() override { return static_cast<std::int32_t>(m_buttons.size()); }
    std::shared_ptr<ports::CommandBarControl> ControlAt(std::int32_t position) override;
    // The keys stand for the captions.
    std::shared_ptr<ports::CommandBarControl> ControlByCaption(const std::string& caption) override;

 private:
    class Handle;
    std::vector<std::unique_ptr<Handle>> m_buttons;
};

}  // namespace krv::control
