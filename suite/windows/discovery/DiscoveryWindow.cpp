#include "suite/windows/discovery/DiscoveryWindow.h"

#include <windowsx.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

#include "common/Joined.h"
#include "common/Text.h"
#include "suite/discovery/VisaAddresses.h"
#include "suite/windows/discovery/DiscoveryLayout.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

using windows::ToWide;

constexpr UINT SearchDone = WM_APP + 1;

constexpr PanelChild Children[] = {
    {DiscoveryWindow::SupportedLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0},
    {DiscoveryWindow::FoundLabel, L"STATIC", L"Instruments &found:", SS_LEFT, 0},
    {DiscoveryWindow::FoundList, L"LISTBOX", L"",
     WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE},
    {DiscoveryWindow::SearchButton, L"BUTTON", L"&Search", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::AddressLabel, L"STATIC", L"&Address:", SS_LEFT | SS_CENTERIMAGE, 0},
    {DiscoveryWindow::AddressBox, L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE},
    {DiscoveryWindow::ConnectButton, L"BUTTON", L"&Connect", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::DisconnectButton, L"BUTTON", L"&Disconnect", WS_TABSTOP | BS_PUSHBUTTON, 0},
    {DiscoveryWindow::StatusLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0},
};

// What the suite drives are signal generators, all of them.
bool Offers(const std::string& instrumentType) {
    return instrumentType.empty() || EqualIgnoringCase(instrumentType, "Signal Generator");
}

// VISA may take its time; it runs on the search's thread.
std::vector<std::string> AddressesToTry(const std::string& computer) {
    constexpr std::chrono::seconds VisaLimit{3};
    std::vector<std::string> known = AnnouncedAddresses();
    std::ranges::move(VisaAddresses({}, VisaLimit), std::back_inserter(known));
    std::ranges::move(NetworkAddresses(), std::back_inserter(known));
    return CandidateAddresses(computer, known);
}

}  // namespace

DiscoveryWindow::DiscoveryWindow(DiscoveryActions& actions, const DiscoveryView& view)
    : PanelWindow(L"CvnDiscoveryWindow", Children), m_actions(actions), m_view(view) {}

RECT DiscoveryWindow::PlaceOf(int child, SIZE size, int dotsPerInch) const {
    return DiscoveryLayout(size, dotsPerInch, m_view.buttonsVisible, m_view.supportedVisible)
        .PlaceOf(child);
}

void DiscoveryWindow::Created() {
    m_lookedFor.reset();
    Update();
}

void DiscoveryWindow::Posted(UINT message) {
    if (message == SearchDone) {
        ShowFound();
    }
}

void DiscoveryWindow::Update() {
    if (Handle() == nullptr) {
        return;
    }
    m_updating = true;
    SetText(SupportedLabel, m_view.supportedModels.empty()
                                ? std::string()
                                : "Supported instruments: " + Joined(m_view.supportedModels));
    SetText(AddressBox, m_view.address);
    SetText(StatusLabel, m_view.status);
    // A disabled window would keep the focus from the keyboard.
    if (!m_view.connected && GetFocus() == ChildWindow(DisconnectButton)) {
        SetFocus(ChildWindow(AddressBox));
    }
    EnableWindow(ChildWindow(ConnectButton), m_view.address.empty() ? FALSE : TRUE);
    EnableWindow(ChildWindow(DisconnectButton), m_view.connected ? TRUE : FALSE);
    UpdateWindow(Handle());
    m_updating = false;
    if (m_lookedFor && *m_lookedFor != m_view.search) {
        Search();
    }
}

void DiscoveryWindow::Command(int id, UINT notification) {
    if (id == ConnectButton && notification == BN_CLICKED) {
        m_actions.ConnectClicked();
    } else if (id == DisconnectButton && notification == BN_CLICKED) {
        m_actions.DisconnectClicked();
    } else if (id == SearchButton && notification == BN_CLICKED) {
        Search();
    } else if (id == AddressBox && notification == EN_CHANGE && !m_updating) {
        m_actions.AddressEntered(TextIn(AddressBox));
    } else if (id == FoundList && notification == LBN_SELCHANGE) {
        TakeSelectedAddress();
    } else if (id == FoundList && notification == LBN_DBLCLK) {
        TakeSelectedAddress();
        m_actions.ConnectClicked();
    }
}

void DiscoveryWindow::Search() {
    m_lookedFor = m_view.search;
    SetText(FoundLabel, "Looking for instruments...");
    m_search.Start(
        [offers = Offers(m_view.search.instrumentType), computer = m_view.search.hostName] {
            return offers ? AddressesToTry(computer) : std::vector<std::string>();
        },
        Handle(), SearchDone);
}

void DiscoveryWindow::ShowFound() {
    auto found = m_search.TakeResult();
    if (!found) {
        return;
    }
    m_found = std::move(*found);
    const bool offers = Offers(m_view.search.instrumentType);
    if (offers) {
        for (const std::string& address : m_view.search.serialAddresses) {
            m_found.push_back({address, {}, {}, {}});
        }
    }
    const HWND list = ChildWindow(FoundList);
    ListBox_ResetContent(list);
    for (const suite::FoundInstrument& instrument : m_found) {
        ListBox_AddString(list, ToWide(Entry(instrument)).c_str());
    }
    SetText(FoundLabel, offers ? "Instruments &found:"
                               : "There are no instruments of the type \"" +
                                     m_view.search.instrumentType + "\" here.");
}

std::string DiscoveryWindow::Entry(const suite::FoundInstrument& instrument) const {
    if (instrument.model.empty()) {
        return instrument.address + "  (serial line)";
    }
    const auto& models = m_view.supportedModels;
    const bool isSupported =
        models.empty() || std::find(models.begin(), models.end(), instrument.model) != models.end();
    return instrument.address + "  (" + instrument.model +
           (isSupported ? ")" : ", not supported)") + "  " + instrument.serialNumber + "  " +
           instrument.firmwareRevision;
}

void DiscoveryWindow::TakeSelectedAddress() {
    const int selected = ListBox_GetCurSel(ChildWindow(FoundList));
    if (selected >= 0 && static_cast<std::size_t>(selected) < m_found.size()) {
        m_actions.AddressEntered(m_found[static_cast<std::size_t>(selected)].address);
    }
}

}  // namespace krv::suite
