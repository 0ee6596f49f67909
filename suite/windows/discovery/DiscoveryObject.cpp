#include "suite/windows/discovery/DiscoveryObject.h"

#include <cwchar>

#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "suite/discovery/SavedSettings.h"
#include "suite/windows/discovery/SerialPorts.h"
#include "suite/windows/discovery/Settings.h"
#include "suite/windows/server/SessionObject.h"
#include "windows/base/BusyCursor.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using windows::LateBound;
using windows::NewText;

constexpr DISPID ConnectionChange = 1;

bool IsSameAddress(const std::string& one, const std::string& other) {
    return _wcsicmp(windows::ToWide(one).c_str(), windows::ToWide(other).c_str()) == 0;
}

// Whether the session, which may be another component's, still leads to an instrument.
bool IsAlive(const LateBound& session) {
    const auto access = AccessTo(session.Object());
    return session && (!access || access->Connected()->IO());
}

std::string StatusOf(const LateBound& session) {
    const std::string address = session.GetText(L"Address");
    const auto access = AccessTo(session.Object());
    return access ? "Connected to " + access->Connected()->Model() + " at " + address + "."
                  : "Connected to " + address + ".";
}

// The serial ports with the line's settings that are asked for; none where none are.
std::vector<std::string> SerialAddressesFor(const LateBound& settings) {
    std::vector<std::string> addresses;
    TrapErrors([&] {
        const LateBound line =
            settings.GetObject(L"InterfaceConfigurations").CallObject(L"Item", {L"RS232"});
        SavedSettings::Serial serial;
        serial.baudRate = line.GetLong(L"BaudRate");
        serial.dataBits = line.GetLong(L"DataBits");
        serial.handshake = line.GetLong(L"Handshake");
        for (const std::string& port : SerialPorts()) {
            addresses.push_back(AddressOf(port, serial));
        }
    });
    return addresses;
}

void CloseIfOwn(const LateBound& session) {
    if (const auto access = AccessTo(session.Object())) {
        access->Close();
    }
}

}  // namespace

DiscoveryObject::DiscoveryObject(const windows::ComClass& description)
    : OleControl({description, __uuidof(DCvnDiscoveryEvents),
                  windows::ToHimetric(DiscoveryWindow::NaturalSize, windows::UsualDotsPerInch)}),
      m_events(this, __uuidof(DCvnDiscoveryEvents)) {}

DiscoveryObject::~DiscoveryObject() {
    Site().Deactivate();
}

HRESULT DiscoveryObject::get_IOSettings(IDispatch** settings) {
    return m_guard.Answer(settings,
                          [&] { return ComPtr<IDispatch>(Settings().Object()).Detach(); });
}

HRESULT DiscoveryObject::put_IOSettings(IDispatch* settings) {
    return m_guard.Run([&] { TakeSettings(settings); });
}

HRESULT DiscoveryObject::putref_IOSettings(IDispatch* settings) {
    return put_IOSettings(settings);
}

HRESULT DiscoveryObject::get_ConnectButtonsVisible(VARIANT_BOOL* visible) {
    return m_guard.Answer(visible, [&] { return ToVariantBool(m_view.buttonsVisible); });
}

HRESULT DiscoveryObject::put_ConnectButtonsVisible(VARIANT_BOOL visible) {
    return m_guard.Run([&] {
        m_view.buttonsVisible = visible != VARIANT_FALSE;
        m_window.Relayout();
    });
}

HRESULT DiscoveryObject::get_SupportInstrumentsLabelVisible(VARIANT_BOOL* visible) {
    return m_guard.Answer(visible, [&] { return ToVariantBool(m_view.supportedVisible); });
}

HRESULT DiscoveryObject::put_SupportInstrumentsLabelVisible(VARIANT_BOOL visible) {
    return m_guard.Run([&] {
        m_view.supportedVisible = visible != VARIANT_FALSE;
        m_window.Relayout();
    });
}

HRESULT DiscoveryObject::get_Address(BSTR* address) {
    return m_guard.Answer(address, [&] { return NewText(m_view.address); });
}

HRESULT DiscoveryObject::put_Address(BSTR address) {
    return m_guard.Run([&] { AddressEntered(windows::TextOf(address)); });
}

HRESULT DiscoveryObject::Connect() {
    return m_guard.Run([&] { ConnectTo(std::string(TrimBlanks(m_view.address))); });
}

HRESULT DiscoveryObject::Disconnect() {
    return m_guard.Run([&] { EndSession(); });
}

HRESULT DiscoveryObject::get_StatusText(BSTR* text) {
    return m_guard.Answer(text, [&] { return NewText(m_view.status); });
}

HRESULT DiscoveryObject::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return m_events.Enumerate(points);
}

HRESULT DiscoveryObject::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
    return m_events.Find(id, point);
}

HWND DiscoveryObject::CreateControlWindow(HWND parent, const RECT& place) {
    // The window comes up also when settings of another component refuse to be read.
    m_guard.Run([&] { TakeSettings(Settings().Object()); });
    HWND window = nullptr;
    m_guard.Run([&] { window = m_window.Create(parent, place); });
    return window;
}

void DiscoveryObject::DrawInactive(HDC context, const RECT& place) {
    RECT area = place;
    FillRect(context, &area, GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    DrawTextW(context, windows::ToWide(m_view.status).c_str(), -1, &area,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// The status line says what a button's failure was.
void DiscoveryObject::ConnectClicked() {
    const ComPtr<IUnknown> alive(static_cast<ICvnDiscoveryCtl*>(this));
    Connect();
}

void DiscoveryObject::DisconnectClicked() {
    const ComPtr<IUnknown> alive(static_cast<ICvnDiscoveryCtl*>(this));
    Disconnect();
}

void DiscoveryObject::AddressEntered(const std::string& address) {
    m_view.address = address;
    m_window.Update();
}

// An instrument may take one client only, so that a session to the same address ends first.
void DiscoveryObject::ConnectTo(const std::string& address) {
    const windows::BusyCursor busy;
    const LateBound previous = Settings().GetObject(L"IO");
    const bool isSame = previous && IsSameAddress(previous.GetText(L"Address"), address);
    ShowStatus("Connecting to " + address + "... Press Esc to cancel.");
    ComPtr<IDispatch> session;
    try {
        if (isSame) {
            CloseIfOwn(previous);
        }
        session = OpenSession(address);
    } catch (const Error& failure) {
        if (isSame) {
            Settings().PutObject(L"IO", nullptr);
            RaiseConnectionChange();
        }
        ShowConnection();
        ShowStatus(failure.Description());
        throw;
    }
    CloseIfOwn(previous);
    Settings().PutObject(L"IO", session.Get());
    const std::string computer = suite::ComputerOf(address);
    Settings().Put(L"HostName", windows::ToWide(computer).c_str());
    ShowConnection();
    RaiseConnectionChange();
}

void DiscoveryObject::EndSession() {
    const LateBound session = Settings().GetObject(L"IO");
    if (!session) {
        return;
    }
    CloseIfOwn(session);
    Settings().PutObject(L"IO", nullptr);
    ShowConnection();
    RaiseConnectionChange();
}

const LateBound& DiscoveryObject::Settings() {
    if (!m_settings) {
        m_settings = LateBound(windows::Adopt(NewIOSettings()).Get());
    }
    return m_settings;
}

void DiscoveryObject::TakeSettings(IDispatch* settings) {
    m_settings = LateBound(settings);
    ReadSupportedModels();
    m_view.search = {Settings().GetText(L"InstrumentType"), Settings().GetText(L"HostName"),
                     SerialAddressesFor(Settings())};
    if (const LateBound session = Settings().GetObject(L"IO"); session) {
        m_view.address = session.GetText(L"Address");
    } else if (Settings().Has(L"LastAddress")) {
        const std::string address = Settings().GetText(L"LastAddress");
        m_view.address = address.empty() ? m_view.address : address;
    }
    ShowConnection();
}

void DiscoveryObject::ReadSupportedModels() {
    m_view.supportedModels.clear();
    const LateBound models = Settings().GetObject(L"SupportedInstruments");
    const long count = models.GetLong(L"Count");
    for (long number = 1; number <= count; ++number) {
        m_view.supportedModels.push_back(windows::TextOf(models.Call(L"Item", {number})));
    }
}

void DiscoveryObject::ShowConnection() {
    const LateBound session = Settings().GetObject(L"IO");
    m_view.connected = IsAlive(session);
    ShowStatus(m_view.connected ? StatusOf(session) : "Not connected.");
}

void DiscoveryObject::ShowStatus(const std::string& status) {
    m_view.status = status;
    m_window.Update();
}

void DiscoveryObject::RaiseConnectionChange() {
    m_changeHeld = AreEventsFrozen();
    if (!m_changeHeld) {
        m_events.Raise(ConnectionChange);
    }
}

void DiscoveryObject::EventsThawed() {
    if (m_changeHeld) {
        RaiseConnectionChange();
    }
}

}  // namespace krv::suite
