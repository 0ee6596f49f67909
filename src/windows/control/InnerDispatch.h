// InnerDispatch: a further dual interface of an object, with late-bound members of its own. It
// lives inside the object and shares its identity and its references.
#pragma once

#include "windows/automation/DispatchMembers.h"

namespace krv::windows {

#pragma GCC diagnostic push
// Interfaces have no destructors: this one goes with its owner.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

template <class Dual>
class InnerDispatch : public DispatchMembers<Dual> {
 public:
    // The owner contains this.
    explicit InnerDispatch(IUnknown& owner) : m_owner(owner) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        return m_owner.QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return m_owner.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return m_owner.Release(); }

 protected:
    ~InnerDispatch() = default;

 private:
    IUnknown& m_owner;
};

#pragma GCC diagnostic pop

}  // namespace krv::windows
