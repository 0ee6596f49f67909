// ControlPersistence: a control's side of IPersistPropertyBag, IPersistStreamInit and
// IPersistStorage: when it may be loaded and saved, whether it has changed, and which storage is
// its own. The control itself only writes its properties into a bag and reads them from one,
// whatever the container keeps.
//
// Members return what the interfaces ask for and throw Error where the container's medium or the
// control fails. A document that was altered is no failure, since a container would drop the
// control for it: the control is then as it was before. Owned by its control; the apartment's
// thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <ocidl.h>
#include <wrl/client.h>

#include <functional>

#include "common/PropertyBag.h"

namespace krv::windows {

class PersistedControl {
 public:
    virtual ~PersistedControl() = default;
    virtual void WriteProperties(PropertyBag& bag) = 0;
    virtual void ReadProperties(PropertyBag& bag) = 0;
};

class ControlPersistence {
 public:
    explicit ControlPersistence(PersistedControl& control) : m_control(control) {}
    ControlPersistence(const ControlPersistence&) = delete;
    ControlPersistence& operator=(const ControlPersistence&) = delete;

    [[nodiscard]] bool IsDirty() const { return m_isDirty; }
    void SetDirty() { m_isDirty = true; }

    // A control is made new or loaded once, by one of the interfaces, which E_UNEXPECTED enforces.
    HRESULT InitNew();
    HRESULT Load(IPropertyBag* bag, IErrorLog* log);
    HRESULT Load(IStream* stream);
    HRESULT Save(IPropertyBag* bag, bool clearDirty);
    HRESULT Save(IStream* stream, bool clearDirty);
    HRESULT GetSizeMax(ULARGE_INTEGER* size);

    // The interface's own states: between Save and SaveCompleted, and between HandsOff and
    // SaveCompleted, the storage isn't touched.
    HRESULT InitNew(IStorage* storage);
    HRESULT Load(IStorage* storage);
    HRESULT Save(IStorage* storage, bool isOwn);
    HRESULT SaveCompleted(IStorage* storage);
    HRESULT HandsOff();

 private:
    enum class StorageState { None, Normal, Saved, HandsOff };

    HRESULT Begin(HRESULT whenBegun);
    // Runs work during which the container may call again, which E_UNEXPECTED refuses.
    HRESULT Alone(const std::function<void()>& work);
    void ReadFrom(IStream& stream);
    void WriteTo(IStream& stream);

    PersistedControl& m_control;
    bool m_isDirty = false;
    bool m_hasBegun = false;
    bool m_isBusy = false;

    StorageState m_state = StorageState::None;
    Microsoft::WRL::ComPtr<IStorage> m_storage;
    // The last Save wrote to the control's own storage, or to any; SaveCompleted makes it count.
    bool m_savedOwn = false;
    bool m_hasSaved = false;
};

}  // namespace krv::windows
