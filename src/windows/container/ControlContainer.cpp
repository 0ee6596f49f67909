#include "windows/container/ControlContainer.h"

#include <utility>

#include "windows/automation/ComGuard.h"
#include "windows/automation/PropertyBags.h"
#include "windows/automation/Query.h"
#include "windows/container/ContainerSite.h"

namespace krv::windows {

ControlContainer::ControlContainer(HWND parent, const CLSID& id, IDispatch* document,
                                   PropertyBag* saved)
    : m_site(MakeCom<ContainerSite>(parent, document)), m_parent(parent) {
    ThrowIfFailed(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject,
                                   reinterpret_cast<void**>(m_object.GetAddressOf())));
    try {
        Initialize(saved);
    } catch (...) {
        Deactivate();
        throw;
    }
}

ControlContainer::~ControlContainer() {
    Deactivate();
}

void ControlContainer::Initialize(PropertyBag* saved) {
    ThrowIfFailed(m_object->SetClientSite(m_site.Get()));
    LoadOrInitialize(saved);
    const SIZE size = Size();
    m_site->place = {0, 0, size.cx, size.cy};
    ThrowIfFailed(m_object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, m_site.Get(), 0, m_parent,
                                   &m_site->place));
}

void ControlContainer::LoadOrInitialize(PropertyBag* saved) {
    const auto bag = Query<IPersistPropertyBag>(m_object.Get());
    if (bag && saved != nullptr) {
        const LentPropertyBag lent(*saved);
        ThrowIfFailed(bag->Load(lent.Object(), nullptr));
    } else if (const auto state = Query<IPersistStreamInit>(m_object.Get())) {
        ThrowIfFailed(state->InitNew());
    } else if (bag) {
        ThrowIfFailed(bag->InitNew());
    }
}

MemoryPropertyBag ControlContainer::Save() const {
    MemoryPropertyBag saved;
    if (const auto bag = Query<IPersistPropertyBag>(m_object.Get())) {
        const LentPropertyBag lent(saved);
        ThrowIfFailed(bag->Save(lent.Object(), TRUE, TRUE));
    }
    return saved;
}

bool ControlContainer::IsDirty() const {
    const auto state = Query<IPersistStreamInit>(m_object.Get());
    return state && state->IsDirty() == S_OK;
}

void ControlContainer::WatchView(std::function<void()> listener) {
    m_site->OnView = std::move(listener);
    if (const auto view = Query<IViewObject>(m_object.Get())) {
        view->SetAdvise(DVASPECT_CONTENT, 0, m_site.Get());
    }
}

void ControlContainer::Deactivate() noexcept {
    if (const auto view = Query<IViewObject>(m_object.Get())) {
        view->SetAdvise(0, 0, nullptr);
    }
    if (const auto place = Query<IOleInPlaceObject>(m_object.Get())) {
        place->InPlaceDeactivate();
    }
    m_object->Close(OLECLOSE_NOSAVE);
    m_object->SetClientSite(nullptr);
    m_site->Surroundings().SetActiveObject(nullptr, nullptr);
}

SIZE ControlContainer::Size() const {
    SIZEL extent{};
    m_object->GetExtent(DVASPECT_CONTENT, &extent);
    return {PixelsOf(extent.cx, m_parent), PixelsOf(extent.cy, m_parent)};
}

void ControlContainer::Move(const RECT& place) {
    m_site->place = place;
    if (const auto object = Query<IOleInPlaceObject>(m_object.Get());
        object && m_site->IsActive()) {
        object->SetObjectRects(&place, &place);
    }
}

bool ControlContainer::TakesMessage(MSG& message) const {
    IOleInPlaceActiveObject* const active = m_site->Surroundings().ActiveObject();
    HWND window = nullptr;
    if (active == nullptr || message.message < WM_KEYFIRST || message.message > WM_KEYLAST ||
        FAILED(active->GetWindow(&window)) ||
        (GetFocus() != window && !IsChild(window, GetFocus()))) {
        return false;
    }
    return active->TranslateAccelerator(&message) == S_OK;
}

}  // namespace krv::windows
