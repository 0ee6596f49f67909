// ComObject: reference count and interface query for a class that implements some interfaces.
//
// Created with MakeCom, destroyed when the last reference goes. Each living object counts in the
// module's count, by which the library may be unloaded or not. For the apartment's thread
// alone; only the counts themselves are safe from any thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objbase.h>
#include <wrl/client.h>

#include <atomic>
#include <new>
#include <utility>

namespace krv::windows {

// Objects and locks that keep this module loaded.
class ModuleCount {
 public:
    static void Add() noexcept { s_count.fetch_add(1, std::memory_order_relaxed); }
    static void Remove() noexcept { s_count.fetch_sub(1, std::memory_order_acq_rel); }
    [[nodiscard]] static long Value() noexcept { return s_count.load(std::memory_order_acquire); }

 private:
    static inline std::atomic<long> s_count{0};
};

// Interfaces have no destructors: objects are destroyed by their last Release.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// First is the interface that stands for the object's identity.
template <class First, class... Others>
class ComObject : public First, public Others... {
 public:
    ComObject() noexcept { ModuleCount::Add(); }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = id == IID_IUnknown ? static_cast<First*>(this) : FindInterface(id);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override {
        return m_references.fetch_add(1, std::memory_order_relaxed) + 1;
    }

    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = m_references.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) {
            // What the destructor's work takes and releases must not destroy the object again.
            m_references.store(1, std::memory_order_relaxed);
            delete this;
        }
        return left;
    }

 protected:
    virtual ~ComObject() { ModuleCount::Remove(); }

    // The interface of this id, or null. A class that answers for base interfaces of its own
    // (IDispatch of a dual interface, say) extends it.
    virtual void* FindInterface(REFIID id) noexcept {
        void* found = nullptr;
        (void)((Matches<First>(id, found)) || ... || Matches<Others>(id, found));
        return found;
    }

 private:
    template <class Interface>
    bool Matches(REFIID id, void*& found) noexcept {
        if (id != __uuidof(Interface)) {
            return false;
        }
        found = static_cast<Interface*>(this);
        return true;
    }

    std::atomic<ULONG> m_references{1};
};

#pragma GCC diagnostic pop

// Takes over the caller's reference. ComPtr's Attach isn't for that: in this compiler's headers it
// adds a reference, and the object would never go.
template <class Interface>
[[nodiscard]] Microsoft::WRL::ComPtr<Interface> Adopt(Interface* object) noexcept {
    Microsoft::WRL::ComPtr<Interface> pointer;
    *pointer.GetAddressOf() = object;
    return pointer;
}

// Throws std::bad_alloc and whatever the constructor throws.
template <class Object, class... Arguments>
[[nodiscard]] Microsoft::WRL::ComPtr<Object> MakeCom(Arguments&&... arguments) {
    return Adopt(new Object(std::forward<Arguments>(arguments)...));
}

}  // namespace krv::windows
