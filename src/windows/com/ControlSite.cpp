#include "windows/com/ControlSite.h"

#include "windows/automation/Query.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

constexpr int HimetricPerInch = 2540;

}  // namespace

ControlSite::~ControlSite() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
}

void ControlSite::SetClientSite(IOleClientSite* site) {
    if (site == nullptr) {
        Deactivate();
    }
    m_clientSite = site;
}

HRESULT ControlSite::Activate(IOleInPlaceObject* object, IOleInPlaceActiveObject* active,
                              bool withInterface) {
    if (m_clientSite == nullptr) {
        return E_UNEXPECTED;
    }
    if (!IsActive()) {
        if (const HRESULT result = OpenWindow(object); FAILED(result)) {
            return result;
        }
        m_clientSite->ShowObject();
    }
    return withInterface ? ShowInterface(active) : S_OK;
}

HRESULT ControlSite::OpenWindow(IOleInPlaceObject* object) {
    const auto site = Query<IOleInPlaceSite>(m_clientSite.Get());
    if (!site || site->CanInPlaceActivate() != S_OK) {
        return E_FAIL;
    }
    HWND parent = nullptr;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO frame{};
    frame.cb = sizeof frame;
    if (const HRESULT refused = site->OnInPlaceActivate(); FAILED(refused)) {
        return refused;
    }
    m_inPlaceSite = site;
    HRESULT result = site->GetWindow(&parent);
    if (SUCCEEDED(result)) {
        result = site->GetWindowContext(m_frame.ReleaseAndGetAddressOf(),
                                        m_documentWindow.ReleaseAndGetAddressOf(), &position, &clip,
                                        &frame);
    }
    if (SUCCEEDED(result)) {
        m_window = m_factory.CreateControlWindow(parent, position);
        result = m_window != nullptr ? S_OK : E_FAIL;
    }
    if (FAILED(result)) {
        Deactivate();
        return result;
    }
    object->SetObjectRects(&position, &clip);
    ShowWindow(m_window, SW_SHOWNA);
    return S_OK;
}

HRESULT ControlSite::ShowInterface(IOleInPlaceActiveObject* active) {
    if (m_interfaceActive) {
        return S_OK;
    }
    m_interfaceActive = true;
    m_inPlaceSite->OnUIActivate();
    if (IsChild(m_window, GetFocus()) == 0) {
        SetFocus(m_window);
    }
    if (m_frame) {
        m_frame->SetActiveObject(active, nullptr);
        m_frame->SetBorderSpace(nullptr);
    }
    if (m_documentWindow) {
        m_documentWindow->SetActiveObject(active, nullptr);
        m_documentWindow->SetBorderSpace(nullptr);
    }
    return S_OK;
}

HRESULT ControlSite::DeactivateInterface() {
    if (!m_interfaceActive) {
        return S_OK;
    }
    m_interfaceActive = false;
    if (m_documentWindow) {
        m_documentWindow->SetActiveObject(nullptr, nullptr);
    }
    if (m_frame) {
        m_frame->SetActiveObject(nullptr, nullptr);
    }
    return m_inPlaceSite->OnUIDeactivate(FALSE);
}

HRESULT ControlSite::Deactivate() {
    if (!IsActive()) {
        return S_OK;
    }
    DeactivateInterface();
    if (m_window != nullptr) {
        DestroyWindow(m_window);
        m_window = nullptr;
    }
    const ComPtr<IOleInPlaceSite> site = m_inPlaceSite;
    m_inPlaceSite.Reset();
    m_frame.Reset();
    m_documentWindow.Reset();
    site->OnInPlaceDeactivate();
    return S_OK;
}

void ControlSite::SetRectangles(const RECT& position, const RECT& clip) {
    if (m_window == nullptr) {
        return;
    }
    RECT shown{};
    HRGN region = nullptr;
    IntersectRect(&shown, &position, &clip);
    if (EqualRect(&shown, &position) == 0) {
        OffsetRect(&shown, -position.left, -position.top);
        region = CreateRectRgnIndirect(&shown);
    }
    SetWindowRgn(m_window, region, TRUE);
    SetWindowPos(m_window, nullptr, position.left, position.top, position.right - position.left,
                 position.bottom - position.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

HRESULT ControlSite::OfferKey(MSG& message) const {
    const auto site = Query<IOleControlSite>(m_clientSite.Get());
    if (!site) {
        return S_FALSE;
    }
    DWORD modifiers = 0;
    modifiers |= GetKeyState(VK_SHIFT) < 0 ? 1U : 0U;
    modifiers |= GetKeyState(VK_CONTROL) < 0 ? 2U : 0U;
    modifiers |= GetKeyState(VK_MENU) < 0 ? 4U : 0U;
    return site->TranslateAccelerator(&message, modifiers);
}

void ControlSite::TellViewChanged() const {
    if (m_viewSink) {
        m_viewSink->OnViewChange(DVASPECT_CONTENT, -1);
    }
}

void ControlSite::TellClosed() const {
    if (m_adviseHolder) {
        m_adviseHolder->SendOnClose();
    }
}

ComPtr<IOleAdviseHolder> ControlSite::AdviseHolder() {
    if (!m_adviseHolder) {
        CreateOleAdviseHolder(&m_adviseHolder);
    }
    return m_adviseHolder;
}

void ControlSite::SetViewAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    m_viewAspects = aspects;
    m_viewFlags = flags;
    m_viewSink = sink;
    if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) {
        TellViewChanged();
    }
}

void ControlSite::GetViewAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const {
    if (aspects != nullptr) {
        *aspects = m_viewAspects;
    }
    if (flags != nullptr) {
        *flags = m_viewFlags;
    }
    if (sink != nullptr) {
        m_viewSink.CopyTo(sink);
    }
}

SIZE ToPixels(SIZEL himetric, int dotsPerInch) {
    return {MulDiv(himetric.cx, dotsPerInch, HimetricPerInch),
            MulDiv(himetric.cy, dotsPerInch, HimetricPerInch)};
}

SIZEL ToHimetric(SIZE pixels, int dotsPerInch) {
    return {MulDiv(pixels.cx, HimetricPerInch, dotsPerInch),
            MulDiv(pixels.cy, HimetricPerInch, dotsPerInch)};
}

}  // namespace krv::windows
