// ConnectionPoint: what an object that has events offers their receivers, and how it raises them.
//
// The object owns it through EventSource, implements IConnectionPointContainer with EventSource's
// help, and may go before a receiver lets go of the connection point.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <wrl/client.h>

#include <initializer_list>
#include <map>
#include <vector>

#include "windows/automation/ComObject.h"

namespace krv::windows {

class ConnectionPoint final : public ComObject<IConnectionPoint> {
 public:
    // Events is a dispatch interface. The container outlives this, or calls Abandon before it goes.
    ConnectionPoint(IConnectionPointContainer* container, const IID& events)
        : m_container(container), m_events(events) {}

    // From now on it has no container and no receivers, and takes no new ones.
    void Abandon() noexcept;
    // The receivers that there are; a copy, since receivers may come and go during an event.
    [[nodiscard]] std::vector<Microsoft::WRL::ComPtr<IDispatch>> Receivers() const;

    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE
    GetConnectionPointContainer(IConnectionPointContainer** container) override;
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

 private:
    IConnectionPointContainer* m_container;
    const IID m_events;
    DWORD m_lastCookie = 0;
    std::map<DWORD, Microsoft::WRL::ComPtr<IDispatch>> m_receivers;
};

class EventSource {
 public:
    EventSource(IConnectionPointContainer* container, const IID& events)
        : m_point(MakeCom<ConnectionPoint>(container, events)), m_events(events) {}
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;
    ~EventSource() { m_point->Abandon(); }

    // Calls every receiver; what a receiver answers is its own affair. Arguments are in the order
    // in which they are written.
    void Raise(DISPID event, std::initializer_list<VARIANT> arguments = {}) const;

    // The same with each argument named by its index, the first in front.
    void RaiseNamed(DISPID event, std::initializer_list<VARIANT> arguments) const;

    HRESULT Enumerate(IEnumConnectionPoints** points) const noexcept;
    HRESULT Find(REFIID events, IConnectionPoint** point) const noexcept;

 private:
    void Tell(DISPID event, DISPPARAMS parameters) const;

    Microsoft::WRL::ComPtr<ConnectionPoint> m_point;
    const IID m_events;
};

}  // namespace krv::windows
