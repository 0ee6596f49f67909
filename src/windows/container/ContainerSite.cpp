#include "windows/container/ContainerSite.h"

#include <olectl.h>

#include "windows/automation/ComGuard.h"
#include "windows/base/DotsPerInch.h"
#include "windows/base/Himetric.h"

namespace krv::windows {
namespace {

int DotsOf(HWND window) {
    return static_cast<int>(DotsPerInch(window));
}

HRESULT Give(VARIANT* result, bool flag) {
    V_VT(result) = VT_BOOL;
    V_BOOL(result) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT GiveColor(VARIANT* result, int systemColor) {
    constexpr LONG FromSystem = static_cast<LONG>(0x80000000);
    V_VT(result) = VT_I4;
    V_I4(result) = FromSystem | systemColor;
    return S_OK;
}

HRESULT GiveFont(VARIANT* result) {
    constexpr LONGLONG EightPoints = 80000;
    constexpr SHORT NormalWeight = 400;
    wchar_t name[] = L"Tahoma";
    FONTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.lpstrName = name;
    description.cySize.int64 = EightPoints;
    description.sWeight = NormalWeight;
    IDispatch* font = nullptr;
    const HRESULT created =
        OleCreateFontIndirect(&description, IID_IDispatch, reinterpret_cast<void**>(&font));
    V_VT(result) = SUCCEEDED(created) ? VT_DISPATCH : VT_EMPTY;
    V_DISPATCH(result) = font;
    return created;
}

HRESULT GiveText(VARIANT* result, const wchar_t* text) {
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = SysAllocString(text);
    return V_BSTR(result) != nullptr ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

int PixelsOf(LONG himetric, HWND window) {
    return MulDiv(himetric, DotsOf(window), HimetricPerInch);
}

ContainerSite::ContainerSite(HWND window, IDispatch* document)
    : PlainSite(window), m_container(MakeCom<OleContainer>(document)) {}

HRESULT STDMETHODCALLTYPE ContainerSite::GetContainer(IOleContainer** container) {
    return m_container->QueryInterface(IID_IOleContainer, reinterpret_cast<void**>(container));
}

HRESULT STDMETHODCALLTYPE ContainerSite::OnInPlaceActivate() {
    m_isActive = true;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE ContainerSite::OnInPlaceDeactivate() {
    m_isActive = false;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE ContainerSite::TransformCoords(POINTL* himetric, POINTF* container,
                                                         DWORD flags) {
    const float scale = static_cast<float>(DotsOf(Window())) / HimetricPerInch;
    if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
        *container = {static_cast<float>(himetric->x) * scale,
                      static_cast<float>(himetric->y) * scale};
    } else {
        *himetric = {static_cast<LONG>(container->x / scale),
                     static_cast<LONG>(container->y / scale)};
    }
    return S_OK;
}

void STDMETHODCALLTYPE ContainerSite::OnViewChange(DWORD, LONG) {
    Guarded(IID_IAdviseSink, "", [this] { OnView(); });
}

HRESULT STDMETHODCALLTYPE ContainerSite::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*,
                                                VARIANT* result, EXCEPINFO*, UINT*) {
    if (result == nullptr) {
        return E_INVALIDARG;
    }
    switch (id) {
        case DISPID_AMBIENT_USERMODE:
        case DISPID_AMBIENT_SUPPORTSMNEMONICS:
            return Give(result, true);
        case DISPID_AMBIENT_UIDEAD:
        case DISPID_AMBIENT_SHOWGRABHANDLES:
        case DISPID_AMBIENT_SHOWHATCHING:
        case DISPID_AMBIENT_DISPLAYASDEFAULT:
        case DISPID_AMBIENT_MESSAGEREFLECT:
            return Give(result, false);
        case DISPID_AMBIENT_BACKCOLOR:
            return GiveColor(result, COLOR_BTNFACE);
        case DISPID_AMBIENT_FORECOLOR:
            return GiveColor(result, COLOR_BTNTEXT);
        case DISPID_AMBIENT_FONT:
            return GiveFont(result);
        case DISPID_AMBIENT_DISPLAYNAME:
            return GiveText(result, L"KRVControl1");
        case DISPID_AMBIENT_LOCALEID:
            V_VT(result) = VT_I4;
            V_I4(result) = static_cast<LONG>(GetUserDefaultLCID());
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
    }
}

}  // namespace krv::windows
