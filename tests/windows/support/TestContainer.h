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
#include "windows/container/PlainContainer.h"

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

// Calls back from within the control's calls.
class ContainerFrame final : public windows::PlainFrame {
 public:
    using PlainFrame::PlainFrame;

    // With the call's name.
    std::function<void(const char* call)> OnCall = [](const char*) {};

    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS) override {
        OnCall("SetBorderSpace");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* active,
                                              LPCOLESTR name) override {
        PlainFrame::SetActiveObject(active, name);
        OnCall("SetActiveObject");
        return S_OK;
    }
};

class ContainerSite final : public windows::PlainSite<ContainerFrame, IAdviseSink> {
 public:
    explicit ContainerSite(HWND window) : PlainSite(window) {
        place = {10, 10, 178, 34};
        Surroundings().OnCall = [this](const char* call) { Act(call); };
    }
    ~ContainerSite() override {
        Surroundings().OnCall = [](const char*) {};
    }

    Notes Noted;
    // Called from within the calls of the control and of the frame's, with their names, and not
    // from within those that it brings about itself.
    std::function<void(const std::string& call)> OnCall;
    // None where the control lies in no document.
    Microsoft::WRL::ComPtr<IOleContainer> Document;
    // What ambient properties the container has.
    std::map<DISPID, _variant_t> Ambient;
    bool MayActivate = true;
    bool HasWindow = true;

    HRESULT STDMETHODCALLTYPE SaveObject() override { return Note("SaveObject"); }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return Document ? Document.CopyTo(container) : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Note("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return Note("OnShowWindow"); }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = HasWindow ? Window() : nullptr;
        Act("GetWindow");
        return HasWindow ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override {
        Act("CanInPlaceActivate");
        return MayActivate ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Note("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Note("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT position,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        const HRESULT given = PlainSite::GetWindowContext(frame, document, position, clip, info);
        Act("GetWindowContext");
        return given;
    }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return Note("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Note("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD) override {
        Note("TranslateAccelerator");
        return S_FALSE;
    }

    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { Note("OnViewChange"); }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override { Note("OnSave"); }
    void STDMETHODCALLTYPE OnClose() override { Note("OnClose"); }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        const auto found = Ambient.find(id);
        return found != Ambient.end() && result != nullptr ? VariantCopy(result, &found->second)
                                                           : DISP_E_MEMBERNOTFOUND;
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
            m_site->Document = windows::MakeCom<windows::OleContainer>(document);
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
        return m_object->DoVerb(verb, nullptr, m_site.Get(), 0, m_window, &m_site->place);
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
