#include "windows/control/SystemContainer.h"

#include <oleidl.h>
#include <wrl/client.h>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "ports/suite/SuiteComponents.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/Query.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"
#include "windows/suite/AutomationDiscovery.h"
#include "windows/suite/AutomationStates.h"

namespace krv::windows {
namespace {

using AttachControl = HRESULT(WINAPI*)(IUnknown* control, HWND window, IUnknown** container);

// A control that is only shown.
class ShownControl : public ports::ForeignObject {
 public:
    explicit ShownControl(const LateBound&) {}
};

// A control behind its port, with its keys.
template <class Port>
class Hosted final : public Port, public KeyTaker {
 public:
    explicit Hosted(const LateBound& control)
        : Port(control), m_active(Query<IOleInPlaceActiveObject>(control.Object())) {}

    bool TakesKey(MSG& message) override {
        // The key may end the form, and with it this.
        const Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> active = m_active;
        return active && active->TranslateAccelerator(&message) == S_OK;
    }

 private:
    Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> m_active;
};

AttachControl LoadAttachControl() {
    static const HMODULE library =
        LoadLibraryExW(L"atl.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    const auto function =
        library != nullptr ? GetProcAddress(library, "AtlAxAttachControl") : nullptr;
    if (function == nullptr) {
        throw Error(ErrorNumber::CannotCreateObject,
                    "The system's component for placing controls on forms (atl.dll) can't be "
                    "loaded.  Repair or update the Windows installation.");
    }
    return reinterpret_cast<AttachControl>(reinterpret_cast<void*>(function));
}

std::shared_ptr<ports::ForeignObject> PortOf(const std::string& progId, const LateBound& control) {
    if (progId == ports::ProgId::Discovery) {
        return std::make_shared<Hosted<AutomationDiscovery>>(control);
    }
    if (progId == ports::ProgId::InstrumentState) {
        return std::make_shared<Hosted<AutomationInstrumentState>>(control);
    }
    return std::make_shared<Hosted<ShownControl>>(control);
}

}  // namespace

std::shared_ptr<ports::ForeignObject> SystemContainer::CreateIn(
    HWND window, const forms::ForeignControl& placeholder) {
    const LateBound control = LateBound::Create(ToWide(placeholder.ProgId).c_str());
    for (const auto& [name, value] : placeholder.Properties) {
        // A control of another suite may do without a property: the form shows it as it is.
        TrapErrors([&] { control.Put(ToWide(name).c_str(), ToVariant(value)); });
    }
    // The window keeps the container.
    Microsoft::WRL::ComPtr<IUnknown> container;
    ThrowIfFailed(LoadAttachControl()(control.Object(), window, &container), control.Object());
    return PortOf(placeholder.ProgId, control);
}

}  // namespace krv::windows
