// GeneratorBar: the command bar "TQL/KRV Signal Generator" in its host, which the control's adapter
// finds by its name and drives. It is temporary: the host forgets it at its end. The host's thread.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/Subscription.h"
#include "windows/addin/Commands.h"
#include "windows/addin/HostTraits.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

// What a button shows.
struct ButtonState {
    bool isEnabled = false;
    bool isVisible = false;
    std::string caption;
    std::string toolTip;
    friend bool operator==(const ButtonState&, const ButtonState&) = default;
};
using ButtonStates = std::array<ButtonState, Commands.size()>;

class GeneratorBar {
 public:
    // Makes the bar, hidden; one that an ended host has left is replaced. `click` is called with a
    // command's index. Throws the host's Error.
    GeneratorBar(const LateBound& application, const HostTraits& traits,
                 std::function<void(std::size_t)> click);
    GeneratorBar(const GeneratorBar&) = delete;
    GeneratorBar& operator=(const GeneratorBar&) = delete;
    // Removes the bar.
    ~GeneratorBar();

    // What the adapter has set. Throws the host's Error.
    [[nodiscard]] ButtonStates States() const;
    // Throws the host's Error.
    void Show(bool isShown) const;

 private:
    void Make();
    void AddButton(const LateBound& controls, std::size_t index);

    LateBound m_application;
    const HostTraits& m_traits;
    std::function<void(std::size_t)> m_click;
    LateBound m_bar;
    // Held as long as their clicks are received.
    std::vector<LateBound> m_buttons;
    std::vector<std::unique_ptr<Subscription>> m_clicks;
};

}  // namespace krv::windows
