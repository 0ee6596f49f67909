// DiscoveryWindow: the discovery control's window: the list of instruments found, the box for an
// address, the buttons, and the lines that say what is supported and what is connected. Each
// instrument is listed as soon as it has answered. The window knows no session: what the user asks
// for goes to its owner.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "suite/discovery/InstrumentList.h"
#include "suite/windows/discovery/FoundListBox.h"
#include "suite/windows/discovery/SearchThread.h"
#include "suite/windows/panel/PanelWindow.h"

namespace krv::suite {

// What the window is the picture of; text is UTF-8.
struct DiscoveryView {
    std::string address;
    std::string status = "Not connected.";
    bool connected = false;
    bool buttonsVisible = true;
    bool supportedVisible = true;
    // Empty when nothing says which models are supported.
    std::vector<std::string> supportedModels{};
    // What is looked for, and where.
    struct Search {
        // The class of instruments that is asked for; empty for any.
        std::string instrumentType{};
        // The computer where instruments are looked for besides this one.
        std::string hostName{};
        // Serial lines, which are listed and not tried: what is at their other end may be anything.
        std::vector<std::string> serialAddresses{};
        friend bool operator==(const Search&, const Search&) = default;
    };
    Search search{};
};

// What the user does. The owner outlives each call, not necessarily the window.
class DiscoveryActions {
 public:
    virtual ~DiscoveryActions() = default;
    virtual void ConnectClicked() = 0;
    virtual void DisconnectClicked() = 0;
    virtual void AddressEntered(const std::string& address) = 0;
};

class DiscoveryWindow final : public PanelWindow {
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

    // The view belongs to the owner, which reports each change of it. Instruments are looked for
    // once the user sees the window, and again when something else is to be looked for.
    DiscoveryWindow(DiscoveryActions& actions, const DiscoveryView& view);
    ~DiscoveryWindow() override { Destroy(); }

    // Shows the view as it is now. Does nothing without a window, as Relayout, which shows what the
    // view's visibilities are now.
    void Update();

    // A control's extent in pixels at 96 dots per inch.
    static constexpr SIZE NaturalSize{473, 311};

 private:
    [[nodiscard]] RECT PlaceOf(int child, SIZE size, int dotsPerInch) const override;
    void Created() override;
    void Shown() override { Search(); }
    void LaidOut() override;
    void Command(int id, UINT notification) override;
    void Posted(UINT message) override;
    [[nodiscard]] int FirstFocus() const override { return AddressBox; }
    [[nodiscard]] int EnterButton(int) const override { return ConnectButton; }

    void Search();
    void TakeNews();
    void ShowInstruments();
    void TakeSelectedAddress();
    [[nodiscard]] std::string Entry(const suite::FoundInstrument& instrument) const;

    DiscoveryActions& m_actions;
    const DiscoveryView& m_view;
    bool m_updating = false;
    InstrumentList m_instruments;
    FoundListBox m_listBox;
    // None before the first search.
    std::optional<DiscoveryView::Search> m_lookedFor;
    SearchThread m_search;
};

}  // namespace krv::suite
