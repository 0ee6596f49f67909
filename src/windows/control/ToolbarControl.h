// ToolbarControl: the toolbar control as a COM object: the core's control behind IToolbarSupport,
// an OLE control's window and interfaces around it.
//
// Created by the class factory; apartment-threaded, on the application's user-interface thread.
// Every member reports the core's errors with number, source and description.
#pragma once

#include <memory>

#include "control/KRVControl.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/base/Handles.h"
#include "windows/com/OleControl.h"
#include "windows/control/InnerInterfaces.h"
#include "windows/control/ThreadServices.h"
#include "windows/control/ToolbarWindow.h"
#include "windows/suite/AutomationStates.h"

namespace krv::windows {

class ToolbarControl final : public OleControl<IToolbarSupport>,
                             public AutomationPeer,
                             public SetupPeer,
                             public ports::ControlSurface {
 public:
    explicit ToolbarControl(const ComClass& description);

    HRESULT STDMETHODCALLTYPE DoAbout() override;
    HRESULT STDMETHODCALLTYPE DoConnect() override;
    HRESULT STDMETHODCALLTYPE get_ConnectedApplication(IDispatch** app) override;
    HRESULT STDMETHODCALLTYPE putref_ConnectedApplication(IDispatch* app) override;
    HRESULT STDMETHODCALLTYPE put_ConnectedApplication(IDispatch* app) override;
    HRESULT STDMETHODCALLTYPE UpdateConnectedStatus() override;
    HRESULT STDMETHODCALLTYPE DoSetup() override;
    HRESULT STDMETHODCALLTYPE DoSaveScreenImage() override;
    HRESULT STDMETHODCALLTYPE DoDataTransfer(VARIANT immediate, VARIANT flag) override;
    HRESULT STDMETHODCALLTYPE StartTransfer(VARIANT first, VARIANT second) override;
    HRESULT STDMETHODCALLTYPE StopTransfer(VARIANT first, VARIANT second) override;
    HRESULT STDMETHODCALLTYPE DoHelp() override;

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override;
    [[nodiscard]] IDispatch* Automation() const override;
    [[nodiscard]] IDispatch* SetupAutomation() override;

 private:
    ~ToolbarControl() override;

    void* FindInterface(REFIID id) noexcept override;
    HWND CreateControlWindow(HWND parent, const RECT& place) override;
    void SiteChanged(IOleClientSite* site) override;
    bool TakesKey(MSG& message) override { return m_window.TakesKey(message); }
    void DrawInactive(HDC context, const RECT& place) override;
    void WriteProperties(PropertyBag& bag) override;
    void ReadProperties(PropertyBag& bag) override;
    void SetBusyPointer(bool isBusy) override;
    ports::DeviceContext ContextHandle() override;
    std::shared_ptr<void> KeepAlive() override;

    template <class Work>
    HRESULT Run(Work&& work);
    void Clicked(std::size_t index);

    const std::shared_ptr<ThreadServices> m_services = ThreadServices::OfThisThread();
    const MemoryContext m_context{CreateCompatibleDC(nullptr)};
    control::KRVControl m_core;
    ToolbarWindow m_window;
    SetupInterfaceObject m_setup;
    DebugContainer m_debug;
    ResourceClient m_resources;
};

}  // namespace krv::windows
