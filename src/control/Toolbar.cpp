#include "control/Toolbar.h"

#include <utility>

#include "common/Error.h"

namespace krv::control {

// One button, as an adapter sets it.
class Toolbar::Handle final : public ports::CommandBarControl {
 public:
    Handle(Toolbar& toolbar, std::size_t index, const std::string& key)
        : State{key, key, key}, m_toolbar(toolbar), m_index(index) {}

    ToolbarButton State;

    void SetEnabled(bool enabled) override { Change(State.Enabled, enabled); }
    void SetVisible(bool visible) override { Change(State.Visible, visible); }
    void SetTooltipText(const std::string& text) override { Change(State.ToolTipText, text); }
    void SetCaption(const std::string& /*caption*/) override {}

 private:
    template <class Kind>
    void Change(Kind& held, const Kind& value) {
        if (held != value) {
            held = value;
            if (m_toolbar.OnChange) {
                m_toolbar.OnChange(m_index);
            }
        }
    }

    Toolbar& m_toolbar;
    const std::size_t m_index;
};

Toolbar::Toolbar() = default;

Toolbar::~Toolbar() = default;

void Toolbar::AddButton(const std::string& key) {
    m_buttons.push_back(std::make_unique<Handle>(*this, m_buttons.size(), key));
}

const ToolbarButton& Toolbar::Button(std::size_t index) const {
    return m_buttons.at(index)->State;
}

bool Toolbar::Click(std::size_t index) {
    if (index >= m_buttons.size() || !Button(index).Enabled || !Button(index).Visible) {
        return false;
    }
    if (OnButtonClick) {
        OnButtonClick(Button(index).Key);
    }
    return true;
}

std::shared_ptr<ports::CommandBarControl> Toolbar::ControlAt(std::int32_t position) {
    if (position < 1 || position > ControlCount()) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    // Holding a button keeps its toolbar alive, and with it the button.
    return {shared_from_this(), m_buttons[static_cast<std::size_t>(position) - 1].get()};
}

std::shared_ptr<ports::CommandBarControl> Toolbar::ControlByCaption(const std::string& caption) {
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        if (Button(index).Key == caption) {
            return ControlAt(static_cast<std::int32_t>(index) + 1);
        }
    }
    throw Error(ErrorNumber::SubscriptOutOfRange);
}

}  // namespace krv::control
