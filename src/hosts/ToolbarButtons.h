// The seven buttons of the toolbar and the rules by which they are set, the same in every host.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ports/office/CommandBar.h"

namespace krv::hosts {

// The host's command bar that carries the buttons.
inline constexpr const char* ToolbarName = "TQL/KRV Signal Generator";

// Keys of the buttons, which are their captions too.
namespace ButtonKey {
inline constexpr const char* About = "Corvane TQL/KRV";
inline constexpr const char* Connect = "Connect";
inline constexpr const char* Connected = "Connected";
inline constexpr const char* Settings = "Settings";
inline constexpr const char* PutData = "PutData";
inline constexpr const char* GetImage = "GetImage";
inline constexpr const char* Help = "Help";
}  // namespace ButtonKey

// One button while no instrument is connected.
struct InitialButton {
    const char* caption;
    bool enabled;
    bool visible;
    const char* toolTip;
};

// By position on the command bar.
extern const std::array<InitialButton, 7> InitialButtons;

// Sets the buttons that there are by position; further ones are left alone. Stops at the host's
// first Error and throws it.
void ApplyInitialState(ports::CommandBar& toolbar);

// What happens to one button; what has no value stays as it is.
struct ButtonChange {
    const char* caption;
    std::optional<bool> enabled;
    std::optional<std::string> toolTip;
};

// The buttons that a connection of this type enables and disables, in order. A letter counts
// wherever it stands in the model's name. model and arbInstalled are called only where they decide.
[[nodiscard]] std::vector<ButtonChange> DecideButtons(std::int16_t connectType,
                                                      const std::function<std::string()>& model,
                                                      const std::function<bool()>& arbInstalled);

// What has been decided while nothing has: the initial state of the buttons that are decided about.
[[nodiscard]] std::vector<ButtonChange> NothingDecided();

// Adds the changes to what has been decided before; the rest of it stays.
void Remember(std::vector<ButtonChange>& decided, const std::vector<ButtonChange>& changes);

// Stops at the host's first Error and throws it.
void ApplyChanges(ports::CommandBar& toolbar, const std::vector<ButtonChange>& changes);

// Hides "Connect" and shows "Connected". Stops at the host's first Error and throws it.
void ShowConnectedButton(ports::CommandBar& toolbar);

// "Connected to M7718C Signal Generator at ADDRESS", with the computer unless it is this one.
[[nodiscard]] std::string ConnectedToolTip(const std::string& model, const std::string& address,
                                           const std::string& computer);

}  // namespace krv::hosts
