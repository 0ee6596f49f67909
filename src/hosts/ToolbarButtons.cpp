#include "hosts/ToolbarButtons.h"

#include <algorithm>
#include <string_view>

#include "hosts/ConnectionType.h"

namespace krv::hosts {
namespace {

constexpr const char* ConnectTip = "Connect to TQL/KRV Signal Generator";
constexpr const char* SettingsTip = "Capture/Restore Settings";
constexpr const char* PutDataTip = "Download Arb Waveform Data";
constexpr const char* GetImageTip = "Get Screen Image";

constexpr const char* NoDualArbTip =
    "Option R2X (Dual Arbitrary Waveform Generator) is not installed.";
constexpr const char* NoBasebandTip = "Baseband Generator Option is not installed.";

bool Contains(const std::string& model, char letter) {
    return model.find(letter) != std::string::npos;
}

std::vector<ButtonChange> DecideSerialKRV(const std::string& model) {
    const ButtonChange noDownload{ButtonKey::PutData, false,
                                  "Download Arb Waveform not supported over RS-232"};
    if (!Contains(model, 'C')) {
        return {noDownload, {ButtonKey::GetImage, true, {}}, {ButtonKey::Settings, true, {}}};
    }
    return {noDownload,
            {ButtonKey::GetImage, false, "Get Image from M7718C not supported over RS-232"},
            {ButtonKey::Settings, false,
             "Capture/Restore Settings of M7718C not supported over RS-232"}};
}

std::vector<ButtonChange> DecideSerialTQL() {
    return {
        {ButtonKey::PutData, false, "Download Arb Waveform to TQL not supported over RS-232"},
        {ButtonKey::GetImage, false, "Get Image from TQL not supported over RS-232"},
        {ButtonKey::Settings, false, "Capture/Restore Settings of TQL not supported over RS-232"}};
}

std::vector<ButtonChange> DecideFull(const std::string& model,
                                     const std::function<bool()>& arbInstalled) {
    std::vector<ButtonChange> changes;
    const bool isB = Contains(model, 'B');
    if (isB || Contains(model, 'C') || Contains(model, 'D')) {
        const bool installed = arbInstalled();
        const char* const missing = isB ? NoDualArbTip : NoBasebandTip;
        changes.push_back({ButtonKey::PutData, installed, installed ? PutDataTip : missing});
    }
    changes.push_back({ButtonKey::GetImage, true, {}});
    changes.push_back({ButtonKey::Settings, true, {}});
    return changes;
}

}  // namespace

const std::array<InitialButton, 7> InitialButtons{{
    {ButtonKey::About, true, true, "About Corvane Tallyport for TQL/KRV"},
    {ButtonKey::Connect, true, true, ConnectTip},
    {ButtonKey::Connected, true, false, ConnectTip},
    {ButtonKey::Settings, false, true, SettingsTip},
    {ButtonKey::PutData, false, true, PutDataTip},
    {ButtonKey::GetImage, false, true, GetImageTip},
    {ButtonKey::Help, true, true, "Help"},
}};

void ApplyInitialState(ports::CommandBar& toolbar) {
    const std::int32_t count =
        std::min(toolbar.ControlCount(), static_cast<std::int32_t>(InitialButtons.size()));
    for (std::int32_t position = 1; position <= count; ++position) {
        const InitialButton& state = InitialButtons[static_cast<std::size_t>(position) - 1];
        const auto control = toolbar.ControlAt(position);
        control->SetEnabled(state.enabled);
        control->SetVisible(state.visible);
        control->SetTooltipText(state.toolTip);
        control->SetCaption(state.caption);
    }
}

std::vector<ButtonChange> DecideButtons(std::int16_t connectType,
                                        const std::function<std::string()>& model,
                                        const std::function<bool()>& arbInstalled) {
    switch (connectType) {
        case ConnectionType::SerialKRV:
            return DecideSerialKRV(model());
        case ConnectionType::SerialTQL:
            return DecideSerialTQL();
        case ConnectionType::Full:
            return DecideFull(model(), arbInstalled);
        default:
            return {};
    }
}

std::vector<ButtonChange> NothingDecided() {
    std::vector<ButtonChange> buttons;
    for (const InitialButton& button : InitialButtons) {
        if (!button.enabled) {
            buttons.push_back({button.caption, false, button.toolTip});
        }
    }
    return buttons;
}

void Remember(std::vector<ButtonChange>& decided, const std::vector<ButtonChange>& changes) {
    for (const ButtonChange& change : changes) {
        for (ButtonChange& button : decided) {
            if (std::string_view(button.caption) == change.caption) {
                button.enabled = change.enabled ? change.enabled : button.enabled;
                button.toolTip = change.toolTip ? change.toolTip : button.toolTip;
            }
        }
    }
}

void ApplyChanges(ports::CommandBar& toolbar, const std::vector<ButtonChange>& changes) {
    for (const ButtonChange& change : changes) {
        const auto control = toolbar.ControlByCaption(change.caption);
        if (change.enabled) {
            control->SetEnabled(*change.enabled);
        }
        if (change.toolTip) {
            control->SetTooltipText(*change.toolTip);
        }
    }
}

void ShowConnectedButton(ports::CommandBar& toolbar) {
    toolbar.ControlByCaption(ButtonKey::Connect)->SetVisible(false);
    toolbar.ControlByCaption(ButtonKey::Connected)->SetVisible(true);
}

std::string ConnectedToolTip(const std::string& model, const std::string& address,
                             const std::string& computer) {
    std::string text = "Connected to " + model + " Signal Generator at " + address;
    if (computer != "My Computer") {
        text += " on " + computer;
    }
    return text;
}

}  // namespace krv::hosts
