// CommandBarModel: a command bar and its buttons, as macros and add-ins see and change them. Owned
// by the application.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

struct CommandBarButton {
    std::string caption;
    std::string tooltipText;
    bool isEnabled = true;
    bool isVisible = true;
    friend bool operator==(const CommandBarButton&, const CommandBarButton&) = default;
};

class CommandBarModel {
 public:
    // Each button's tool tip is at first its caption. The listener outlives the bar.
    CommandBarModel(std::string name, const std::vector<std::string>& captions,
                    std::function<void()> listener);

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(m_buttons.size()); }
    // Positions count from 1; each throws Error 5 when there is no such button.
    [[nodiscard]] const CommandBarButton& At(std::int32_t position) const;
    void Set(std::int32_t position, const CommandBarButton& button);
    // Case and the "&" of keyboard access don't count.
    [[nodiscard]] std::int32_t PositionOf(std::string_view caption) const;

 private:
    std::string m_name;
    std::vector<CommandBarButton> m_buttons;
    std::function<void()> m_listener;
};

}  // namespace krv::bench
