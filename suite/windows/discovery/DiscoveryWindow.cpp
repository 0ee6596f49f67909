#include "suite/windows/discovery/DiscoveryWindow.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "common/Joined.h"
#include "common/Text.h"
#include "suite/discovery/SearchPlaces.h"
#include "suite/windows/discovery/DiscoveryLayout.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

using windows::ToWide;

constexpr UINT SearchNews = WM_APP + 1;

// Serial lines are listed behind everything that has answered.
constexpr std::size_t LastPlace = std::numeric_limits<std::size_t>::max();

constexpr PanelChild Children[] = {
    {DiscoveryWindow::SupportedLabel, L"STATIC", L"", SS_LEFT | SS_NOPREFIX, 0},
    {DiscoveryWindow::FoundLabel, L"STATIC", L"Instruments &found:", SS_LEFT, 0},
    {DiscoveryWindow::FoundList, L"LISTBOX", L"",
     WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, WS_EX_CLIENTEDGE},
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

}  // namespace

DiscoveryWindow::DiscoveryWindow(DiscoveryActions& actions, const DiscoveryView& view)
    : PanelWindow(L"CvnDiscoveryWindow", Children), m_actions(actions), m_view(view) {}

RECT DiscoveryWindow::PlaceOf(int child, SIZE size, int dotsPerInch) const {
    return DiscoveryLayout(size, dotsPerInch, m_view.buttonsVisible, m_view.supportedVisible)
        .PlaceOf(child);
}

void DiscoveryWindow::Created() {
    m_lookedFor.reset();
    m_instruments = {};
    m_listBox = FoundListBox(ChildWindow(FoundList));
    Update();
}

void DiscoveryWindow::LaidOut() {
    // It lies in an earlier window until the new one is complete.
    if (m_listBox.Window() == ChildWindow(FoundList)) {
        m_listBox.Measure();
    }
}

void DiscoveryWindow::Posted(UINT message) {
    if (message == SearchNews) {
        TakeNews();
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
    ShowInstruments();
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
    m_instruments.BeginSearch();
    std::vector<SearchPlace> places;
    if (Offers(m_view.search.instrumentType)) {
        places = UsualPlaces(m_view.search.hostName, {});
        for (const std::string& address : m_view.search.serialAddresses) {
            m_instruments.Add({.address = address, .place = LastPlace});
        }
    }
    ShowInstruments();
    m_search.Start(std::move(places), Handle(), SearchNews);
}

void DiscoveryWindow::TakeNews() {
    const SearchThread::News news = m_search.TakeNews();
    for (const FoundInstrument& found : news.found) {
        m_instruments.Add(found);
    }
    if (news.isOver) {
        m_instruments.EndSearch();
        SetText(FoundLabel, Offers(m_view.search.instrumentType)
                                ? "Instruments &found:"
                                : "There are no instruments of the type \"" +
                                      m_view.search.instrumentType + "\" here.");
    }
    ShowInstruments();
}

void DiscoveryWindow::ShowInstruments() {
    std::vector<FoundListBox::Line> lines;
    for (const FoundInstrument& each : m_instruments.Instruments()) {
        lines.push_back({each.address, ToWide(Entry(each))});
    }
    m_listBox.Show(lines);
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
    if (const std::string address = m_listBox.SelectedAddress(); !address.empty()) {
        m_actions.AddressEntered(address);
    }
}

}  // namespace krv::suite
