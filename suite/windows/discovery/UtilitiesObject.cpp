// Where a control lies in its container, found through the interfaces that every container offers.
#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <oleidl.h>
#include <servprov.h>

#include "common/Error.h"
#include "suite/windows/SuiteObject.h"
#include "suite/windows/discovery/Settings.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/Query.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using windows::Query;

// The service by which sites hand out the automation object of their container.
constexpr GUID ContainerDispatchService{
    0xb722be00, 0x4e68, 0x101b, {0xa2, 0xbc, 0x00, 0xaa, 0x00, 0x40, 0x47, 0x70}};

void RequireControl(IDispatch* control) {
    if (control == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
}

ComPtr<IOleClientSite> SiteOf(IUnknown* control) {
    ComPtr<IOleClientSite> site;
    if (const auto object = Query<IOleObject>(control)) {
        object->GetClientSite(&site);
    }
    return site;
}

HWND WindowOf(IUnknown* object) {
    HWND window = nullptr;
    if (const auto owner = Query<IOleWindow>(object)) {
        owner->GetWindow(&window);
    }
    return window;
}

// A control that isn't active has no window of its own; its site has one.
HWND WindowAround(IDispatch* control) {
    HWND window = nullptr;
    if (const auto object = Query<IOleInPlaceObject>(control)) {
        object->GetWindow(&window);
    }
    return window != nullptr ? window : WindowOf(SiteOf(control).Get());
}

ComPtr<IDispatch> ContainerOf(IOleClientSite* site) {
    ComPtr<IOleContainer> container;
    site->GetContainer(&container);
    if (auto document = Query<IDispatch>(container.Get())) {
        return document;
    }
    ComPtr<IDispatch> document;
    if (const auto services = Query<IServiceProvider>(site)) {
        services->QueryService(ContainerDispatchService, IID_IDispatch,
                               reinterpret_cast<void**>(document.GetAddressOf()));
    }
    return document;
}

ComPtr<IDispatch> DocumentOf(IDispatch* control) {
    const auto site = SiteOf(control);
    ComPtr<IDispatch> document = site ? ContainerOf(site.Get()) : nullptr;
    if (document) {
        return document;
    }
    if (const auto members = Query<IDispatch>(site.Get())) {
        document = windows::LateBound(members.Get()).GetObject(L"Document").Object();
    }
    if (!document) {
        throw Error(ErrorNumber::Unspecified, "The control does not lie in a document.");
    }
    return document;
}

class UtilitiesObject final : public SuiteObject<ICvnVCUtilities> {
 public:
    UtilitiesObject() : SuiteObject(ProgId::VCUtilities) {}

    HRESULT STDMETHODCALLTYPE TopLevelWindow(IDispatch* control, LONG* window) override {
        return Guard().Answer(window, [&] {
            RequireControl(control);
            const HWND inner = WindowAround(control);
            if (inner == nullptr) {
                throw Error(ErrorNumber::Unspecified, "The control does not lie in a window.");
            }
            // Handles have 32 significant bits also in 64-bit programs.
            return HandleToLong(GetAncestor(inner, GA_ROOTOWNER));
        });
    }
    HRESULT STDMETHODCALLTYPE ContainingDocument(IDispatch* control,
                                                 IDispatch** document) override {
        return Guard().Answer(document, [&] {
            RequireControl(control);
            return DocumentOf(control).Detach();
        });
    }
};

}  // namespace

IUnknown* NewVCUtilities() {
    return NewObject<UtilitiesObject>();
}

}  // namespace krv::suite
