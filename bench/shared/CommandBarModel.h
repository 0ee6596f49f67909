// CommandBarModel: a command bar and its buttons, as macros and add-ins see and change them. Owned
// by the application; one thread's.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

struct CommandBarButton {
    std::string caption;
    std::string tooltipText;
    bool isEnabled = true;
    bool isVisible = true;
    std::string tag = {};
    std::int32_t style = 0;
    friend bool operator==(const CommandBarButton&, const CommandBarButton&) = default;
};

// Those who hear of a button's clicks, by a number.
using ClickListeners = std::map<std::int32_t, std::function<void()>>;

class CommandBarModel {
 public:
    // Each button's tool tip is at first its caption. The listener outlives the bar.
    CommandBarModel(std::string name, const std::vector<std::string>& captions,
                    std::function<void()> listener);

    [[nodiscard]] const std::string& Name() const { return m_name; }
    [[nodiscard]] bool IsVisible() const { return m_isVisible; }
    void Show(bool isShown);

    [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(m_buttons.size()); }
    // Positions count from 1; each throws Error 5 when there is no such button.
    [[nodiscard]] const CommandBarButton& At(std::int32_t position) const;
    void Set(std::int32_t position, const CommandBarButton& button);
    // Case and the "&" of keyboard access don't count.
    [[nodiscard]] std::int32_t PositionOf(std::string_view caption) const;

    // At the end.
    void Add(CommandBarButton button);
    // Returns the number by which the listener is removed.
    std::int32_t AddClickListener(std::int32_t position, std::function<void()> listener);
    void RemoveClickListener(std::int32_t position, std::int32_t number);
    // False when nobody hears of it.
    [[nodiscard]] bool Click(std::int32_t position);

 private:
    struct Entry {
        CommandBarButton button;
        ClickListeners listeners = {};
    };
    [[nodiscard]] Entry& EntryAt(std::int32_t position);

    std::string m_name;
    std::vector<Entry> m_buttons;
    std::function<void()> m_listener;
    bool m_isVisible = true;
    std::int32_t m_lastListener = 0;
};

}  // namespace krv::bench
