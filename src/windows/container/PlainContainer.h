// What a container has for its controls, in its plainest form: a frame and a site that agree to
// everything, offer no room for menus and tools, and have no ambient properties. Bases of those
// that do more.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include "windows/automation/ComObject.h"

namespace krv::windows {

// The container, in whose stead the document answers for automation.
class OleContainer final : public ComObject<IOleContainer> {
 public:
    explicit OleContainer(IDispatch* document) : m_document(document) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return id == IID_IDispatch && m_document != nullptr ? m_document->QueryInterface(id, object)
                                                            : ComObject::QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumObjects(DWORD, IEnumUnknown**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockContainer(BOOL) override { return S_OK; }

 private:
    Microsoft::WRL::ComPtr<IDispatch> m_document;
};

// The window that holds the control, as the frame of its user interface.
class PlainFrame : public ComObject<IOleInPlaceFrame> {
 public:
    explicit PlainFrame(HWND window) : m_window(window) {}

    [[nodiscard]] IOleInPlaceActiveObject* ActiveObject() const { return m_active.Get(); }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_window;
        return S_OK;
    }
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
    void* FindInterface(REFIID id) noexcept override {
        const bool isBase = id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow;
        return isBase ? static_cast<IOleInPlaceFrame*>(this) : ComObject::FindInterface(id);
    }

 private:
    HWND m_window;
    Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> m_active;
};

// The control's place in a window, in whose frame it shows its user interface.
template <class Frame, class... Others>
class PlainSite
    : public ComObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch, Others...> {
 public:
    explicit PlainSite(HWND window) : m_window(window), m_frame(MakeCom<Frame>(window)) {}

    // Where the control lies in the window, in pixels.
    RECT place{};
    [[nodiscard]] Frame& Surroundings() const { return *m_frame.Get(); }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_window;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT position,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        // The frame is the document's window, too.
        *document = nullptr;
        *position = *clip = place;
        info->fMDIApp = FALSE;
        info->hwndFrame = GetAncestor(m_window, GA_ROOT);
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return m_frame.CopyTo(frame);
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    // The ambient properties, which Invoke gives.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IOleWindow ? static_cast<IOleInPlaceSite*>(this)
                                    : ComObject<IOleClientSite, IOleInPlaceSite, IOleControlSite,
                                                IDispatch, Others...>::FindInterface(id);
    }
    [[nodiscard]] HWND Window() const { return m_window; }

 private:
    HWND m_window;
    Microsoft::WRL::ComPtr<Frame> m_frame;
};

}  // namespace krv::windows
