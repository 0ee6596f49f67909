#include "windows/automation/EventSubscription.h"

#include <ocidl.h>
#include <wrl/client.h>

#include <utility>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/ComObject.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

class EventSink final : public ComObject<IDispatch> {
 public:
    EventSink(const IID& events, EventHandler handler)
        : m_events(events), m_handler(std::make_shared<EventHandler>(std::move(handler))) {}

    void Disconnect() noexcept { m_handler.reset(); }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return count == nullptr ? E_POINTER : (*count = 0, S_OK);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        if (arguments == nullptr) {
            return E_POINTER;
        }
        // The handler may end the subscription.
        const std::shared_ptr<EventHandler> handler = m_handler;
        if (!handler) {
            return S_OK;
        }
        return Guarded(m_events, "", [&] { (*handler)(event, *arguments); });
    }

 protected:
    // A source in another process can't ask by the events' own identity where nothing describes
    // them to the system; it then asks for IDispatch.
    void* FindInterface(REFIID id) noexcept override {
        return id == m_events ? static_cast<IDispatch*>(this) : ComObject::FindInterface(id);
    }

 private:
    const IID m_events;
    std::shared_ptr<EventHandler> m_handler;
};

class EventSubscription final : public Subscription {
 public:
    EventSubscription(ComPtr<IConnectionPoint> point, ComPtr<EventSink> sink)
        : m_point(std::move(point)), m_sink(std::move(sink)) {
        ThrowIfFailed(m_point->Advise(m_sink.Get(), &m_cookie), m_point.Get());
    }
    // A source that has died can't be unsubscribed from, and needn't be.
    ~EventSubscription() override {
        m_sink->Disconnect();
        m_point->Unadvise(m_cookie);
    }

 private:
    ComPtr<IConnectionPoint> m_point;
    ComPtr<EventSink> m_sink;
    DWORD m_cookie = 0;
};

ComPtr<IConnectionPoint> FindConnectionPoint(IUnknown* source, const IID& events) {
    ComPtr<IConnectionPointContainer> container;
    ThrowIfFailed(source->QueryInterface(IID_IConnectionPointContainer,
                                         reinterpret_cast<void**>(container.GetAddressOf())));
    ComPtr<IConnectionPoint> point;
    if (FAILED(container->FindConnectionPoint(events, &point))) {
        ThrowIfFailed(container->FindConnectionPoint(IID_IDispatch, &point), container.Get());
    }
    return point;
}

}  // namespace

// Named ones stand in front, in any order; those without a name follow, last to first.
const VARIANT* EventArgument(const DISPPARAMS& arguments, UINT index) {
    for (UINT named = 0; named < arguments.cNamedArgs; ++named) {
        if (arguments.rgdispidNamedArgs[named] == static_cast<DISPID>(index)) {
            return &arguments.rgvarg[named];
        }
    }
    const UINT unnamed = arguments.cArgs - arguments.cNamedArgs;
    return index < unnamed ? &arguments.rgvarg[arguments.cArgs - 1 - index] : nullptr;
}

std::unique_ptr<Subscription> SubscribeToEvents(IUnknown* source, const IID& events,
                                                EventHandler handler) {
    if (source == nullptr) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return std::make_unique<EventSubscription>(FindConnectionPoint(source, events),
                                               MakeCom<EventSink>(events, std::move(handler)));
}

}  // namespace krv::windows
