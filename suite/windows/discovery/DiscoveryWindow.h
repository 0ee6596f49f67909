// DiscoveryWindow: the discovery control's window: the list of instruments found, the box for an
// address, the buttons, and the lines that say what is supported and what is connected. It knows no
// session: what the user asks for goes to its owner.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "suite/InstrumentSearch.h"
#include "suite/windows/discovery/SearchThread.h"

namespace krv::suitecom {

// What the window is the picture of; text is UTF-8.
struct DiscoveryView {
    std::string address;
    std::string status = "Not connected.";
    bool connected = false;
    bool buttonsVisible = true;
    bool supportedVisible = true;
    // Empty when nothing says which models are supported.
    std::vector<std::string> supportedModels{};
    // The host where instruments are looked for besides this computer.
    std::string hostName{};
};

// What the user does. The owner outlives each call, not necessarily the window.
class DiscoveryActions {
 public:
    virtual ~DiscoveryActions() = default;
    virtual void ConnectClicked() = 0;
    virtual void DisconnectClicked() = 0;
    virtual void AddressEntered(const std::string& address) = 0;
};

class DiscoveryWindow {
 public:
    // The children's identifiers.
    enum Child : int {
        SupportedLabel = 101,
        FoundLabel,
        FoundList,
        SearchButton,
        AddressLabel,
        AddressBox,
        ConnectButton,
        DisconnectButton,
        StatusLabel
    };

    // The view is the owner's; the window shows it and is told when it changed.
    DiscoveryWindow(DiscoveryActions& actions, const DiscoveryView& view)
        : m_actions(actions), m_view(view) {}
    DiscoveryWindow(const DiscoveryWindow&) = delete;
    DiscoveryWindow& operator=(const DiscoveryWindow&) = delete;
    ~DiscoveryWindow();

    // Null when the system refuses it. The search for instruments begins.
    HWND Create(HWND parent, const RECT& place);
    // Shows the view as it is now. Does nothing without a window, as Relayout.
    void Update();
    // Shows what the view's visibilities, the size and the resolution are now.
    void Relayout();
    // Enter and Tab of the keyboard, as far as they stay in the window.
    bool TakesKey(const MSG& message);

    // A control's extent in pixels at 96 dots per inch.
    static constexpr SIZE NaturalSize{473, 311};

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM low);
    LRESULT Handle(UINT message, WPARAM wide, LPARAM low);
    void CreateChildren();
    void Command(int id, UINT notification);
    void Search();
    void ShowFound();
    void TakeSelectedAddress();
    [[nodiscard]] std::string Entry(const server::FoundInstrument& instrument) const;
    [[nodiscard]] HWND Child(int id) const { return GetDlgItem(m_window, id); }
    void SetText(int id, const std::string& text);
    bool MoveFocus(bool backward);

    DiscoveryActions& m_actions;
    const DiscoveryView& m_view;
    HWND m_window = nullptr;
    HFONT m_font = nullptr;
    bool m_updating = false;
    std::vector<server::FoundInstrument> m_found;
    SearchThread m_search;
};

}  // namespace krv::suitecom
