// TestContainer: a container of controls that offers what the system's own doesn't: ambient
// properties, activation of the user interface, extents, property bags, and notes of all that a
// control asks and tells it.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <comdef.h>
#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>
#include <wrl/client.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "windows/automation/ComObject.h"

namespace krv::tests {

// What has happened, in order: "OnUIActivate".
using Notes = std::vector<std::string>;

// The container's document as a property bag; names are found without regard to case.
class DocumentBag final : public windows::ComObject<IPropertyBag> {
 public:
    std::map<std::wstring, _variant_t> Values;

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        const auto found = Values.find(KeyOf(name));
        return found != Values.end() ? VariantCopy(value, &found->second) : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override {
        Values[KeyOf(name)] = *value;
        return S_OK;
    }

 private:
    static std::wstring KeyOf(LPCOLESTR name) {
        std::wstring key = name;
        CharUpperW(key.data());
        return key;
    }
};

// The frame around the document, whose keys and user interface the active control shares.
class ContainerFrame final : public windows::ComObject<IOleInPlaceFrame> {
 public:
    explicit ContainerFrame(HWND window) : m_window(window) {}

    Microsoft::WRL::ComPtr<IOleInPlaceActiveObject> Active;
    // Called from within the calls of the control, with their names.
    std::function<void(const char* call)> OnCall = [](const char*) {};

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_window;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override {
        return INPLACE_E_NOTOOLSPACE;
    }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override {
        OnCall("SetBorderSpace");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) override {
        Active = active;
        OnCall("SetActiveObject");
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
        return id == IID_IOleWindow || id == IID_IOleInPlaceUIWindow
                   ? static_cast<IOleInPlaceFrame*>(this)
                   : ComObject::FindInterface(id);
    }

 private:
    HWND m_window;
};

// The container, in whose stead the document answers for automation.
class ContainerDocument final : public windows::ComObject<IOleContainer> {
 public:
    explicit ContainerDocument(IDispatch* document) : m_document(document) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return id == IID_IDispatch ? m_document->QueryInterface(id, object)
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

class ContainerSite final : public windows::ComObject<IOleClientSite, IOleInPlaceSite,
                                                      IOleControlSite, IAdviseSink, IDispatch> {
 public:
    explicit ContainerSite(HWND window)
        : m_window(window), m_frame(windows::MakeCom<ContainerFrame>(window)) {
        m_frame->OnCall = [this](const char* call) { Act(call); };
    }
    ~ContainerSite() override {
        m_frame->OnCall = [](const char*) {};
    }

    Notes Noted;
    // Called from within the calls of the control and of the frame's, with their names, and not
    // from within those that it brings about itself.
    std::function<void(const std::string& call)> OnCall;
    // None where the control lies in no document.
    Microsoft::WRL::ComPtr<IOleContainer> Document;
    // What ambient properties the container has.
    std::map<DISPID, _variant_t> Ambient;
    RECT Place{10, 10, 178, 34};
    bool MayActivate = true;
    bool HasWindow = true;
    [[nodiscard]] ContainerFrame& Frame() const { return *m_frame.Get(); }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return Note("SaveObject"); }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return Document ? Document.CopyTo(container) : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Note("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return Note("OnShowWindow"); }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = HasWindow ? m_window : nullptr;
        Act("GetWindow");
        return HasWindow ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override {
        Act("CanInPlaceActivate");
        return MayActivate ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Note("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Note("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT position,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        *document = nullptr;
        *position = *clip = Place;
        info->fMDIApp = FALSE;
        info->hwndFrame = m_window;
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        Act("GetWindowContext");
        return m_frame.CopyTo(frame);
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return Note("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Note("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override {
        Note("TranslateAccelerator");
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { Note("OnViewChange"); }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override { Note("OnSave"); }
    void STDMETHODCALLTYPE OnClose() override { Note("OnClose"); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        const auto found = Ambient.find(id);
        return found != Ambient.end() && result != nullptr ? VariantCopy(result, &found->second)
                                                           : DISP_E_MEMBERNOTFOUND;
    }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IOleWindow ? static_cast<IOleInPlaceSite*>(this)
                                    : ComObject::FindInterface(id);
    }

 private:
    HRESULT Note(const char* what) {
        Noted.emplace_back(what);
        Act(what);
        return S_OK;
    }
    void Act(const char* call) {
        if (auto act = std::exchange(OnCall, nullptr)) {
            act(call);
            OnCall = std::move(act);
        }
    }

    HWND m_window;
    Microsoft::WRL::ComPtr<ContainerFrame> m_frame;
};

// Lets go of the control at its end as containers do: closed, without a site, without advice.
class TestContainer {
 public:
    // Gives the control its site, and notifies it of changes of its view and of its closing.
    explicit TestContainer(IUnknown* control, IDispatch* document = nullptr)
        : m_window(CreateWindowExW(0, L"STATIC", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                   0, 400, 200, nullptr, nullptr, nullptr, nullptr)),
          m_site(windows::MakeCom<ContainerSite>(m_window)) {
        control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(m_object.GetAddressOf()));
        m_site->Ambient = {{DISPID_AMBIENT_USERMODE, true},
                           {DISPID_AMBIENT_UIDEAD, false},
                           {DISPID_AMBIENT_BACKCOLOR, long{RGB(255, 250, 205)}},
                           {DISPID_AMBIENT_FORECOLOR, long{RGB(0, 0, 128)}},
                           {DISPID_AMBIENT_DISPLAYNAME, L"KRVControl1"},
                           {DISPID_AMBIENT_LOCALEID, long{LOCALE_USER_DEFAULT}}};
        if (document != nullptr) {
            m_site->Document = windows::MakeCom<ContainerDocument>(document);
        }
        m_object->SetClientSite(m_site.Get());
        m_object->Advise(m_site.Get(), &m_advised);
        As<IViewObject2>()->SetAdvise(DVASPECT_CONTENT, 0, m_site.Get());
    }
    TestContainer(const TestContainer&) = delete;
    TestContainer& operator=(const TestContainer&) = delete;
    ~TestContainer() {
        m_object->Close(OLECLOSE_NOSAVE);
        As<IViewObject2>()->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
        m_object->Unadvise(m_advised);
        m_object->SetClientSite(nullptr);
        m_object.Reset();
        DestroyWindow(m_window);
    }

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] ContainerSite& Site() const { return *m_site.Get(); }
    [[nodiscard]] IOleObject& Object() const { return *m_object.Get(); }

    template <class Interface>
    [[nodiscard]] Microsoft::WRL::ComPtr<Interface> As() const {
        Microsoft::WRL::ComPtr<Interface> found;
        m_object->QueryInterface(__uuidof(Interface),
                                 reinterpret_cast<void**>(found.GetAddressOf()));
        return found;
    }

    HRESULT DoVerb(LONG verb) const {
        return m_object->DoVerb(verb, nullptr, m_site.Get(), 0, m_window, &m_site->Place);
    }
    // The control's window; null while it isn't active.
    [[nodiscard]] HWND ControlWindow() const {
        HWND window = nullptr;
        As<IOleInPlaceObject>()->GetWindow(&window);
        return window;
    }
    // What was noted since the last call.
    Notes TakeNotes() const { return std::exchange(m_site->Noted, {}); }

 private:
    HWND m_window;
    Microsoft::WRL::ComPtr<ContainerSite> m_site;
    Microsoft::WRL::ComPtr<IOleObject> m_object;
    DWORD m_advised = 0;
};

}  // namespace krv::tests
