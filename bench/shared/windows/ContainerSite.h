// ContainerSite: what a control in a ControlContainer talks to: its client site with the ambient
// properties, its place in the window, the frame, and the container. Used by ControlContainer only.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include "windows/automation/ComObject.h"

namespace krv::bench {

// The container, in whose stead the document answers for automation.
class OleContainer final : public windows::ComObject<IOleContainer> {
 public:
    explicit OleContainer(IDispatch* document) : m_document(document) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumObjects(DWORD, IEnumUnknown**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockContainer(BOOL) override { return S_OK; }

 private:
    Microsoft::WRL::ComPtr<IDispatch> m_document;
};

// The window that holds the control, as the frame of its user interface. It offers no room for the
// control's own menus and tools.
class ContainerFrame final : public windows::ComObject<IOleInPlaceFrame> {
 public:
    explicit ContainerFrame(HWND window) : m_window(window) {}

    [[nodiscard]] IOleInPlaceActiveObject* ActiveObject() const { return m_active.Get(); }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override {
        return INPLACE_E_NOTOOLSPACE;
    }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) override {
        m_active = active;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 protected:
    void* FindInterface(REFIID id) noexcept override;

 private:
    HWND m_window;
    Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> m_active;
};

class ContainerSite final
    : public windows::ComObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch> {
 public:
    ContainerSite(HWND window, IDispatch* document);

    // Where the control lies in the window, in pixels.
    RECT place{};
    [[nodiscard]] ContainerFrame& Frame() const { return *m_frame.Get(); }
    // From the control's activation to its deactivation.
    [[nodiscard]] bool IsActive() const { return m_isActive; }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT position,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                              DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    // The ambient properties.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override;

 protected:
    void* FindInterface(REFIID id) noexcept override;

 private:
    HWND m_window;
    bool m_isActive = false;
    Microsoft::WRL::ComPtr<ContainerFrame> m_frame;
    Microsoft::WRL::ComPtr<OleContainer> m_container;
};

// Hundredths of a millimetre to pixels of the window's monitor.
[[nodiscard]] int PixelsOf(LONG himetric, HWND window);

}  // namespace krv::bench
