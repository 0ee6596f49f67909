#include "windows/addin/SitedControl.h"

#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

constexpr WindowKind SiteKind{L"KRVAddInControl"};
constexpr const wchar_t* ControlName = L"CvnKRVControl.KRVControl";

CLSID ControlClass() {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(ControlName, &id))) {
        throw Error(ErrorNumber::CannotCreateObject,
                    "The toolbar control CvnKRVControl.KRVControl is not registered on this "
                    "computer.  Register KRVControl.dll of the same word size as this program.");
    }
    return id;
}

}  // namespace

SitedControl::SitedControl(const Place& place, PropertyBag* saved, std::function<void()> onView) {
    const CLSID id = ControlClass();
    Create(SiteKind,
           {.style = place.window != nullptr ? WS_CHILD : WS_POPUP, .parent = place.window});
    const LateBound container =
        place.traits.hasSheets ? place.document.GetObject(L"ActiveSheet") : place.document;
    m_container = std::make_unique<ControlContainer>(Handle(), id, container.Object(), saved);
    const LateBound control = Control();
    control.PutObject(L"ConnectedApplication", place.application.Object());
    control.Call(L"UpdateConnectedStatus");
    m_container->WatchView(std::move(onView));
}

// The control goes while its window is there.
SitedControl::~SitedControl() {
    m_container.reset();
}

void SitedControl::MoveTo(HWND window) {
    if (window != nullptr && Handle() != nullptr && GetParent(Handle()) != window) {
        SetParent(Handle(), window);
    }
}

LateBound SitedControl::Control() const {
    if (!m_container) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return LateBound(m_container->Control());
}

MemoryPropertyBag SitedControl::Save() const {
    if (!m_container) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return m_container->Save();
}

void SitedControl::Run(const Command& command) const {
    // Whatever the command lets happen, the control lives to its end.
    const LateBound control = Control();
    if (std::wstring_view(command.member) == L"DoDataTransfer") {
        // The first argument has no meaning; 0 asks for files first.
        control.Call(command.member, {ToVariant(std::int32_t{0}), ToVariant(std::int16_t{0})});
    } else {
        control.Call(command.member);
    }
}

void SitedControl::TellActive() const {
    Control().Call(L"UpdateConnectedStatus");
}

LRESULT SitedControl::HandleMessage(UINT message, WPARAM wide, LPARAM low) {
    if (message == WM_DESTROY && m_container) {
        TrapErrors([this] { m_last = Save(); });
        m_container.reset();
    }
    return DefaultMessage(message, wide, low);
}

}  // namespace krv::windows
