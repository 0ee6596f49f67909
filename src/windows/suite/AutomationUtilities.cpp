#include "windows/suite/AutomationUtilities.h"

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::windows {
namespace {

_variant_t ArgumentFor(ports::ControlSurface& control) {
    return _variant_t(AutomationBehind(control));
}

}  // namespace

ports::WindowHandle AutomationUtilities::TopLevelWindow(ports::ControlSurface& control) {
    const _variant_t argument = ArgumentFor(control);
    ports::WindowHandle window = 0;
    // Window handles have 32 significant bits on every Windows and are extended with their sign.
    TrapErrors([&] { window = LongOf(m_utilities.Call(L"TopLevelWindow", {argument})); });
    return window;
}

std::shared_ptr<ports::HostDocument> AutomationUtilities::ContainingDocument(
    ports::ControlSurface& control) {
    auto document =
        DocumentOf(m_utilities.CallObject(L"ContainingDocument", {ArgumentFor(control)}).Object());
    if (!document) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return document;
}

}  // namespace krv::windows
