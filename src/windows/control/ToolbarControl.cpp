#include "windows/control/ToolbarControl.h"

#include <utility>

#include "windows/automation/VariantValue.h"
#include "windows/base/DotsPerInch.h"
#include "windows/com/ThemedScope.h"

namespace krv::windows {

ToolbarControl::ToolbarControl(const ComClass& description)
    : OleControl({description, IID_NULL, ToHimetric(NaturalToolbarSize, UsualDotsPerInch)}),
      m_core(m_services->ServicesFor(*this)),
      m_window(m_core.Toolbar1()),
      m_setup(*static_cast<IToolbarSupport*>(this), m_core),
      m_debug(*static_cast<IToolbarSupport*>(this)),
      m_resources(*static_cast<IToolbarSupport*>(this)) {
    m_core.Toolbar1().OnChange = [this](std::size_t index) {
        m_window.Update(index);
        Site().TellViewChanged();
    };
    m_core.OnPropertiesChanged = [this] { SetDirty(); };
    m_window.OnClick = [this](std::size_t index) { Clicked(index); };
}

ToolbarControl::~ToolbarControl() {
    m_core.Toolbar1().OnChange = nullptr;
    Site().Deactivate();
}

// Windows that the work opens look like the current system's. It may let messages through, and with
// them whatever makes the container drop the control.
template <class Work>
HRESULT ToolbarControl::Run(Work&& work) {
    const Microsoft::WRL::ComPtr<IToolbarSupport> alive(this);
    return Guard([&] {
        const ThemedScope themed;
        work();
    });
}

void ToolbarControl::Clicked(std::size_t index) {
    Run([&] { m_core.Toolbar1().Click(index); });
}

HRESULT ToolbarControl::DoAbout() {
    return Run([&] { m_core.DoAbout(); });
}

HRESULT ToolbarControl::DoConnect() {
    return Run([&] { m_core.DoConnect(); });
}

HRESULT ToolbarControl::get_ConnectedApplication(IDispatch** app) {
    if (app == nullptr) {
        return E_POINTER;
    }
    *app = nullptr;
    return Run([&] {
        if (const auto host = m_core.ConnectedApplication()) {
            *app = AutomationBehind(*host);
            (*app)->AddRef();
        }
    });
}

HRESULT ToolbarControl::putref_ConnectedApplication(IDispatch* app) {
    return Run([&] { m_core.SetConnectedApplication(HostOf(app)); });
}

HRESULT ToolbarControl::put_ConnectedApplication(IDispatch* app) {
    return putref_ConnectedApplication(app);
}

HRESULT ToolbarControl::UpdateConnectedStatus() {
    return Run([&] { m_core.UpdateConnectedStatus(); });
}

HRESULT ToolbarControl::DoSetup() {
    return Run([&] { m_core.DoSetup(); });
}

HRESULT ToolbarControl::DoSaveScreenImage() {
    return Run([&] { m_core.DoSaveScreenImage(); });
}

HRESULT ToolbarControl::DoDataTransfer(VARIANT, VARIANT flag) {
    // A flag that is no single value asks for nothing that there is, like any unknown one.
    return Run([&] { m_core.DoDataTransfer(EmptyValue{}, ToValueOrEmpty(flag)); });
}

HRESULT ToolbarControl::StartTransfer(VARIANT, VARIANT) {
    return Run([&] { m_core.StartTransfer(EmptyValue{}, EmptyValue{}); });
}

HRESULT ToolbarControl::StopTransfer(VARIANT, VARIANT) {
    return Run([&] { m_core.StopTransfer(EmptyValue{}, EmptyValue{}); });
}

HRESULT ToolbarControl::DoHelp() {
    return Run([&] { m_core.DoHelp(); });
}

HRESULT ToolbarControl::InterfaceSupportsErrorInfo(REFIID id) {
    return id == __uuidof(ISetupInterface) ? S_OK : OleControl::InterfaceSupportsErrorInfo(id);
}

IDispatch* ToolbarControl::Automation() const {
    return static_cast<IToolbarSupport*>(const_cast<ToolbarControl*>(this));
}

IDispatch* ToolbarControl::SetupAutomation() {
    return static_cast<ISetupInterface*>(&m_setup);
}

void* ToolbarControl::FindInterface(REFIID id) noexcept {
    if (id == __uuidof(ISetupInterface)) {
        return static_cast<ISetupInterface*>(&m_setup);
    }
    if (id == __uuidof(IDebugContainer)) {
        return static_cast<IDebugContainer*>(&m_debug);
    }
    if (id == __uuidof(CvnResourceClient)) {
        return static_cast<CvnResourceClient*>(&m_resources);
    }
    return OleControl::FindInterface(id);
}

HWND ToolbarControl::CreateControlWindow(HWND parent, const RECT& place) {
    return m_window.Create(parent, place);
}

void ToolbarControl::SiteChanged(IOleClientSite* site) {
    if (site == nullptr) {
        m_core.Terminate();
    }
}

void ToolbarControl::DrawInactive(HDC context, const RECT& place) {
    DrawToolbar(context, place, m_core.Toolbar1(), GetDeviceCaps(context, LOGPIXELSX));
}

void ToolbarControl::WriteProperties(PropertyBag& bag) {
    m_core.WriteProperties(bag);
}

void ToolbarControl::ReadProperties(PropertyBag& bag) {
    const ThemedScope themed;
    m_core.ReadProperties(bag);
}

void ToolbarControl::SetBusyPointer(bool isBusy) {
    m_window.SetBusyPointer(isBusy);
}

ports::DeviceContext ToolbarControl::ContextHandle() {
    return reinterpret_cast<ports::DeviceContext>(m_context.get());
}

std::shared_ptr<void> ToolbarControl::KeepAlive() {
    return std::make_shared<Microsoft::WRL::ComPtr<IToolbarSupport>>(this);
}

}  // namespace krv::windows
