#include "windows/com/ControlSite.h"

#include <array>
#include <utility>

#include "windows/automation/Query.h"
#include "windows/base/Himetric.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

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
    const ComPtr<IOleClientSite> before = std::exchange(m_clientSite, site);
}

HRESULT ControlSite::Activate(IOleInPlaceActiveObject* active, bool withInterface) {
    if (m_clientSite == nullptr) {
        return E_UNEXPECTED;
    }
    if (!IsActive()) {
        const ComPtr<IOleClientSite> site = m_clientSite;
        if (const HRESULT result = OpenWindow(); FAILED(result)) {
            return result;
        }
        site->ShowObject();
        if (!IsActive()) {
            return OLE_E_NOT_INPLACEACTIVE;
        }
    }
    return withInterface ? ShowInterface(active) : S_OK;
}

HRESULT ControlSite::OpenWindow() {
    const auto site = Query<IOleInPlaceSite>(m_clientSite.Get());
    const bool isAllowed = site && site->CanInPlaceActivate() == S_OK;
    if (IsActive()) {
        return S_OK;
    }
    if (!isAllowed || m_clientSite == nullptr) {
        return E_FAIL;
    }
    m_inPlaceSite = site;
    const unsigned activation = ++m_activation;
    HRESULT result = site->OnInPlaceActivate();
    if (FAILED(result)) {
        if (IsStill(activation)) {
            m_inPlaceSite.Reset();
        }
        return result;
    }
    result = PlaceWindow(*site.Get(), activation);
    if (FAILED(result) && IsStill(activation)) {
        Deactivate();
    }
    return result;
}

HRESULT ControlSite::PlaceWindow(IOleInPlaceSite& site, unsigned activation) {
    HWND parent = nullptr;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    HRESULT result = site.GetWindow(&parent);
    if (SUCCEEDED(result)) {
        result = site.GetWindowContext(&frame, &document, &position, &clip, &info);
    }
    if (FAILED(result) || !IsStill(activation)) {
        return FAILED(result) ? result : OLE_E_NOT_INPLACEACTIVE;
    }
    m_frame = frame;
    m_documentWindow = document;
    const HWND window = m_factory.CreateControlWindow(parent, position);
    if (!IsStill(activation)) {
        DestroyWindow(window);
        return OLE_E_NOT_INPLACEACTIVE;
    }
    m_window = window;
    if (window == nullptr) {
        return E_FAIL;
    }
    SetRectangles(position, clip);
    ShowWindow(window, SW_SHOWNA);
    return IsStill(activation) ? S_OK : OLE_E_NOT_INPLACEACTIVE;
}

HRESULT ControlSite::ShowInterface(IOleInPlaceActiveObject* active) {
    if (m_interfaceActive) {
        return S_OK;
    }
    if (m_window == nullptr || m_isEnding) {
        // Asked for from within the activation or its end.
        return OLE_E_NOT_INPLACEACTIVE;
    }
    m_interfaceActive = true;
    const ComPtr<IOleInPlaceSite> site = m_inPlaceSite;
    const std::array<ComPtr<IOleInPlaceUIWindow>, 2> frames{m_frame, m_documentWindow};
    const auto isShown = [this, activation = m_activation] {
        return m_interfaceActive && IsStill(activation);
    };
    site->OnUIActivate();
    if (isShown() && IsChild(m_window, GetFocus()) == 0) {
        SetFocus(m_window);
    }
    for (const auto& frame : frames) {
        if (frame && isShown()) {
            frame->SetActiveObject(active, nullptr);
        }
        if (frame && isShown()) {
            frame->SetBorderSpace(nullptr);
        }
    }
    return isShown() ? S_OK : OLE_E_NOT_INPLACEACTIVE;
}

HRESULT ControlSite::DeactivateInterface() {
    if (!m_interfaceActive) {
        return S_OK;
    }
    m_interfaceActive = false;
    const ComPtr<IOleInPlaceSite> site = m_inPlaceSite;
    const std::array<ComPtr<IOleInPlaceUIWindow>, 2> frames{m_documentWindow, m_frame};
    for (const auto& frame : frames) {
        if (frame) {
            frame->SetActiveObject(nullptr, nullptr);
        }
    }
    return site->OnUIDeactivate(FALSE);
}

HRESULT ControlSite::Deactivate() {
    const unsigned activation = m_activation;
    m_isEnding = true;
    DeactivateInterface();
    m_isEnding = false;
    if (!IsStill(activation)) {
        return S_OK;
    }
    m_interfaceActive = false;
    const ComPtr<IOleInPlaceSite> site = std::exchange(m_inPlaceSite, nullptr);
    const ComPtr<IOleInPlaceFrame> frame = std::exchange(m_frame, nullptr);
    const ComPtr<IOleInPlaceUIWindow> document = std::exchange(m_documentWindow, nullptr);
    if (const HWND window = std::exchange(m_window, nullptr); window != nullptr) {
        DestroyWindow(window);
    }
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
    if (const ComPtr<IAdviseSink> sink = m_viewSink) {
        sink->OnViewChange(DVASPECT_CONTENT, -1);
    }
}

void ControlSite::TellClosed() const {
    if (const ComPtr<IOleAdviseHolder> holder = m_adviseHolder) {
        holder->SendOnClose();
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

SIZEL ToHimetric(SIZE pixels, int dotsPerInch) {
    return {MulDiv(pixels.cx, HimetricPerInch, dotsPerInch),
            MulDiv(pixels.cy, HimetricPerInch, dotsPerInch)};
}

}  // namespace krv::windows
