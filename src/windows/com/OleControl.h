// OleControl: the base of an in-process ActiveX control with a window: in-place activation, extent,
// drawing when inactive, class information, persistence. What a particular control adds are its
// dual interface, its window and its inactive picture.
//
// What a control keeps in its container's document goes through a property bag, whichever way the
// container saves; a control that overrides nothing keeps nothing. Not marked safe for scripting or
// initialisation: it offers no IObjectSafety. Apartment-threaded.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <olectl.h>

#include <cwchar>
#include <utility>

#include "windows/automation/ComGuard.h"
#include "windows/automation/DispatchObject.h"
#include "windows/com/ComModule.h"
#include "windows/com/ControlPersistence.h"
#include "windows/com/ControlSite.h"

namespace krv::windows {

// What there is to say of a control without asking it.
struct ControlTraits {
    // Static.
    const ComClass& description;
    // The interface of its events, or IID_NULL.
    IID events;
    // As long as its container hasn't given it another one.
    SIZEL extentHimetric;
};

// Dual is the control's default interface; Others are further interfaces of its own.
template <class Dual, class... Others>
class OleControl
    : public DispatchObject<Dual, Others..., IOleObject, IOleInPlaceObject, IOleInPlaceActiveObject,
                            IOleControl, IViewObject2, IPersistPropertyBag, IPersistStreamInit,
                            IPersistStorage, IProvideClassInfo2>,
      protected ControlWindowFactory,
      protected PersistedControl {
    using Base =
        DispatchObject<Dual, Others..., IOleObject, IOleInPlaceObject, IOleInPlaceActiveObject,
                       IOleControl, IViewObject2, IPersistPropertyBag, IPersistStreamInit,
                       IPersistStorage, IProvideClassInfo2>;

 public:
    explicit OleControl(const ControlTraits& traits)
        : m_traits(traits), m_site(*this, traits.extentHimetric) {}

    // --- IOleObject
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) override {
        return Held([&] {
            m_site.SetClientSite(site);
            SiteChanged(site);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) override {
        return site != nullptr ? GiveReference(m_site.ClientSite(), site) : E_POINTER;
    }
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD) override {
        return Held([&] {
            m_site.Deactivate();
            m_site.TellClosed();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, LPMSG, IOleClientSite*, LONG, HWND,
                                     LPCRECT) override {
        switch (verb) {
            case OLEIVERB_PRIMARY:
            case OLEIVERB_SHOW:
            case OLEIVERB_OPEN:
            case OLEIVERB_UIACTIVATE:
                return Held([&] { return m_site.Activate(this, true); });
            case OLEIVERB_INPLACEACTIVATE:
                return Held([&] { return m_site.Activate(this, false); });
            case OLEIVERB_HIDE:
                return InPlaceDeactivate();
            default:
                return verb > 0 ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
        }
    }
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB**) override { return OLEOBJ_E_NOVERBS; }
    HRESULT STDMETHODCALLTYPE Update() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* id) override { return GetClassID(id); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD, LPOLESTR* type) override {
        if (type == nullptr) {
            return E_POINTER;
        }
        const std::size_t size = (wcslen(m_traits.description.title) + 1) * sizeof(wchar_t);
        *type = static_cast<LPOLESTR>(CoTaskMemAlloc(size));
        return *type != nullptr ? (memcpy(*type, m_traits.description.title, size), S_OK)
                                : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) override {
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        if (size == nullptr) {
            return E_POINTER;
        }
        return Held([&] {
            m_site.SetExtent(*size);
            m_site.TellViewChanged();
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* size) override {
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        if (size == nullptr) {
            return E_POINTER;
        }
        *size = m_site.Extent();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* connection) override {
        if (sink == nullptr || connection == nullptr) {
            return E_POINTER;
        }
        const auto holder = m_site.AdviseHolder();
        return holder ? holder->Advise(sink, connection) : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD connection) override {
        const auto holder = m_site.AdviseHolder();
        return holder ? holder->Unadvise(connection) : OLE_E_NOCONNECTION;
    }
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** connections) override {
        if (connections == nullptr) {
            return E_POINTER;
        }
        const auto holder = m_site.AdviseHolder();
        return holder ? holder->EnumAdvise(connections) : E_OUTOFMEMORY;
    }
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) override {
        if (status == nullptr) {
            return E_POINTER;
        }
        *status = aspect == DVASPECT_CONTENT ? m_traits.description.miscStatus : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

    // --- IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        if (window == nullptr) {
            return E_POINTER;
        }
        *window = m_site.Window();
        return *window != nullptr ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() override {
        return Held([&] { return m_site.Deactivate(); });
    }
    HRESULT STDMETHODCALLTYPE UIDeactivate() override {
        return Held([&] { return m_site.DeactivateInterface(); });
    }
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT position, LPCRECT clip) override {
        if (position == nullptr || clip == nullptr) {
            return E_POINTER;
        }
        return Held([&] {
            m_site.SetRectangles(*position, *clip);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() override { return INPLACE_E_NOTUNDOABLE; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG message) override {
        if (message == nullptr) {
            return E_POINTER;
        }
        return Held([&] { return TakesKey(*message) ? S_OK : m_site.OfferKey(*message); });
    }
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }

    // --- IOleControl
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnMnemonic(LPMSG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) override {
        if (freeze != FALSE) {
            ++m_freezes;
        } else if (m_freezes > 0 && --m_freezes == 0) {
            return Held([&] {
                EventsThawed();
                return S_OK;
            });
        }
        return S_OK;
    }

    // --- IViewObject2
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC context,
                                   LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR),
                                   ULONG_PTR) override {
        if (aspect != DVASPECT_CONTENT) {
            return DV_E_DVASPECT;
        }
        if (bounds == nullptr || context == nullptr) {
            return bounds == nullptr ? E_POINTER : E_INVALIDARG;
        }
        const RECT place{bounds->left, bounds->top, bounds->right, bounds->bottom};
        return Guard([&] { DrawInDeviceUnits(context, place); });
    }
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                          LOGPALETTE**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override {
        return Held([&] {
            m_site.SetViewAdvise(aspects, flags, sink);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override {
        m_site.GetViewAdvise(aspects, flags, sink);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*,
                                        LPSIZEL size) override {
        return GetExtent(aspect, size);
    }

    // --- IPersist and the interfaces that extend it
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        if (id == nullptr) {
            return E_POINTER;
        }
        *id = m_traits.description.id;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InitNew() override {
        return Held([&] { return m_persistence.InitNew(); });
    }
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override {
        return Held([&] { return m_persistence.InitNew(storage); });
    }
    HRESULT STDMETHODCALLTYPE IsDirty() override {
        return m_persistence.IsDirty() ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
        return Held([&] { return m_persistence.Load(bag, log); });
    }
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override {
        return Held([&] { return m_persistence.Load(stream); });
    }
    HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override {
        return Held([&] { return m_persistence.Load(storage); });
    }
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL) override {
        return Held([&] { return m_persistence.Save(bag, clearDirty != FALSE); });
    }
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override {
        return Held([&] { return m_persistence.Save(stream, clearDirty != FALSE); });
    }
    HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL isOwn) override {
        return Held([&] { return m_persistence.Save(storage, isOwn != FALSE); });
    }
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override {
        return Held([&] { return m_persistence.SaveCompleted(storage); });
    }
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override {
        return Held([&] { return m_persistence.HandsOff(); });
    }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
        return Held([&] { return m_persistence.GetSizeMax(size); });
    }

    // --- IProvideClassInfo2
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** information) override {
        if (information == nullptr) {
            return E_POINTER;
        }
        return Guard([&] { *information = LoadTypeInfo(m_traits.description.id).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* id) override {
        if (id == nullptr) {
            return E_POINTER;
        }
        const bool known =
            kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID && m_traits.events != GUID(IID_NULL);
        *id = known ? m_traits.events : GUID(IID_NULL);
        return known ? S_OK : E_INVALIDARG;
    }

 protected:
    // The control's part. The site is null when the container lets go of the control.
    virtual void SiteChanged(IOleClientSite* site) = 0;
    // Uses up a key that was pressed while the control has the focus.
    virtual bool TakesKey(MSG& message) = 0;
    // In the context's device units.
    virtual void DrawInactive(HDC context, const RECT& place) = 0;
    void WriteProperties(PropertyBag& /*bag*/) override {}
    // Whatever the bag holds. Throws nothing that its document could bring about.
    void ReadProperties(PropertyBag& /*bag*/) override {}
    // To be called when something that WriteProperties writes has changed.
    void SetDirty() { m_persistence.SetDirty(); }

    // The container isn't ready for events; it will say when it is.
    [[nodiscard]] bool AreEventsFrozen() const { return m_freezes > 0; }
    virtual void EventsThawed() {}

    void* FindInterface(REFIID id) noexcept override {
        if (id == IID_IOleWindow) {
            return static_cast<IOleWindow*>(static_cast<IOleInPlaceObject*>(this));
        }
        if (id == IID_IViewObject) {
            return static_cast<IViewObject*>(static_cast<IViewObject2*>(this));
        }
        if (id == IID_IPersist) {
            return static_cast<IPersist*>(static_cast<IPersistPropertyBag*>(this));
        }
        // Its members are the first of IPersistStreamInit.
        if (id == IID_IPersistStream) {
            return static_cast<IPersistStreamInit*>(this);
        }
        if (id == IID_IProvideClassInfo) {
            return static_cast<IProvideClassInfo*>(static_cast<IProvideClassInfo2*>(this));
        }
        return Base::FindInterface(id);
    }

    [[nodiscard]] ControlSite& Site() { return m_site; }

    template <class Body>
    HRESULT Guard(Body&& body) noexcept {
        return Guarded(__uuidof(Dual), ThisComModule().name, std::forward<Body>(body));
    }

 private:
    template <class Interface>
    static HRESULT GiveReference(Interface* object, Interface** target) {
        *target = object;
        if (object != nullptr) {
            object->AddRef();
        }
        return S_OK;
    }

    // What the container is told, and message boxes of a document, may make it drop the control.
    template <class Work>
    HRESULT Held(Work&& work) noexcept {
        const Microsoft::WRL::ComPtr<IUnknown> alive(static_cast<IOleObject*>(this));
        HRESULT answer = S_OK;
        const HRESULT result = Guard([&] { answer = work(); });
        return FAILED(result) ? result : answer;
    }

    // Containers draw in all kinds of mapping modes; a metafile has no device of its own.
    void DrawInDeviceUnits(HDC context, RECT place) {
        if (GetDeviceCaps(context, TECHNOLOGY) == DT_METAFILE) {
            DrawInactive(context, place);
            return;
        }
        LPtoDP(context, reinterpret_cast<POINT*>(&place), 2);
        const int saved = SaveDC(context);
        SetMapMode(context, MM_TEXT);
        SetWindowOrgEx(context, 0, 0, nullptr);
        SetViewportOrgEx(context, 0, 0, nullptr);
        DrawInactive(context, place);
        RestoreDC(context, saved);
    }

    const ControlTraits m_traits;
    ControlSite m_site;
    ControlPersistence m_persistence{*this};
    int m_freezes = 0;
};

}  // namespace krv::windows
