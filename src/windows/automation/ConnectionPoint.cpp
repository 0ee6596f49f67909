#include "windows/automation/ConnectionPoint.h"

#include <olectl.h>

#include <algorithm>
#include <numeric>

#include "windows/automation/Enumerator.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

struct Connection {
    ComPtr<IDispatch> receiver;
    DWORD cookie;
};

struct ConnectionTraits {
    using Interface = IEnumConnections;
    using Item = CONNECTDATA;
    using Kept = Connection;
    static HRESULT Copy(const Kept& kept, Item* item) {
        item->dwCookie = kept.cookie;
        return kept.receiver.CopyTo(&item->pUnk);
    }
    static void Undo(Item* item) { item->pUnk->Release(); }
};

struct PointTraits {
    using Interface = IEnumConnectionPoints;
    using Item = IConnectionPoint*;
    using Kept = ComPtr<IConnectionPoint>;
    static HRESULT Copy(const Kept& kept, Item* item) { return kept.CopyTo(item); }
    static void Undo(Item* item) { (*item)->Release(); }
};

}  // namespace

void ConnectionPoint::Abandon() noexcept {
    m_container = nullptr;
    m_receivers.clear();
}

std::vector<ComPtr<IDispatch>> ConnectionPoint::Receivers() const {
    std::vector<ComPtr<IDispatch>> receivers;
    for (const auto& [cookie, receiver] : m_receivers) {
        receivers.push_back(receiver);
    }
    return receivers;
}

HRESULT ConnectionPoint::GetConnectionInterface(IID* id) {
    if (id == nullptr) {
        return E_POINTER;
    }
    *id = m_events;
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) {
        return E_POINTER;
    }
    *container = m_container;
    if (m_container == nullptr) {
        return E_UNEXPECTED;
    }
    m_container->AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) {
        return E_POINTER;
    }
    *cookie = 0;
    // A receiver in another process answers for IDispatch alone.
    ComPtr<IDispatch> receiver;
    if (FAILED(sink->QueryInterface(m_events, reinterpret_cast<void**>(receiver.GetAddressOf()))) &&
        FAILED(sink->QueryInterface(IID_IDispatch,
                                    reinterpret_cast<void**>(receiver.GetAddressOf())))) {
        return CONNECT_E_CANNOTCONNECT;
    }
    if (m_container == nullptr) {
        return CONNECT_E_CANNOTCONNECT;
    }
    try {
        m_receivers.emplace(m_lastCookie + 1, receiver);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    *cookie = ++m_lastCookie;
    return S_OK;
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    return m_receivers.erase(cookie) != 0 ? S_OK : CONNECT_E_NOCONNECTION;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    if (connections == nullptr) {
        return E_POINTER;
    }
    try {
        std::vector<Connection> kept;
        for (const auto& [cookie, receiver] : m_receivers) {
            kept.push_back({receiver, cookie});
        }
        *connections = MakeCom<Enumerator<ConnectionTraits>>(std::move(kept)).Detach();
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

void EventSource::Raise(DISPID event, std::initializer_list<VARIANT> arguments) const {
    std::vector<VARIANT> reversed(arguments);
    std::reverse(reversed.begin(), reversed.end());
    Tell(event, {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0});
}

void EventSource::RaiseNamed(DISPID event, std::initializer_list<VARIANT> arguments) const {
    std::vector<VARIANT> inOrder(arguments);
    std::vector<DISPID> names(inOrder.size());
    std::iota(names.begin(), names.end(), 0);
    const auto count = static_cast<UINT>(inOrder.size());
    Tell(event, {inOrder.data(), names.data(), count, count});
}

// Receivers may let go of the source and of the connection point.
void EventSource::Tell(DISPID event, DISPPARAMS parameters) const {
    const ComPtr<ConnectionPoint> point = m_point;
    for (const ComPtr<IDispatch>& receiver : point->Receivers()) {
        receiver->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                         nullptr, nullptr, nullptr);
    }
}

HRESULT EventSource::Enumerate(IEnumConnectionPoints** points) const noexcept {
    if (points == nullptr) {
        return E_POINTER;
    }
    try {
        *points =
            MakeCom<Enumerator<PointTraits>>(std::vector<PointTraits::Kept>{m_point}).Detach();
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT EventSource::Find(REFIID events, IConnectionPoint** point) const noexcept {
    if (point == nullptr) {
        return E_POINTER;
    }
    *point = nullptr;
    return events == m_events ? m_point.CopyTo(point) : CONNECT_E_NOCONNECTION;
}

}  // namespace krv::windows
