#include "windows/com/ControlPersistence.h"

#include <algorithm>
#include <optional>

#include "common/Error.h"
#include "common/ScopeExit.h"
#include "common/StreamedBag.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/PropertyBags.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

constexpr const wchar_t* StreamName = L"Contents";

std::size_t ReadBytes(IStream& stream, std::span<std::byte> bytes) {
    std::size_t taken = 0;
    while (taken < bytes.size()) {
        ULONG count = 0;
        ThrowIfFailed(
            stream.Read(bytes.data() + taken, static_cast<ULONG>(bytes.size() - taken), &count));
        if (count == 0) {
            break;
        }
        taken += std::min<std::size_t>(count, bytes.size() - taken);
    }
    return taken;
}

void WriteBytes(IStream& stream, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        ULONG count = 0;
        ThrowIfFailed(stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()), &count));
        if (count == 0 || count > bytes.size()) {
            throw Error(ErrorNumber::DeviceInputOutput);
        }
        bytes = bytes.subspan(count);
    }
}

}  // namespace

HRESULT ControlPersistence::Begin(HRESULT whenBegun) {
    if (m_hasBegun) {
        return whenBegun;
    }
    m_hasBegun = true;
    return S_OK;
}

HRESULT ControlPersistence::Alone(const std::function<void()>& work) {
    if (m_isBusy) {
        return E_UNEXPECTED;
    }
    m_isBusy = true;
    const ScopeExit ended([&] { m_isBusy = false; });
    work();
    return S_OK;
}

// A new control counts as changed, so that its container saves it.
HRESULT ControlPersistence::InitNew() {
    const HRESULT result = Begin(E_UNEXPECTED);
    m_isDirty = m_isDirty || SUCCEEDED(result);
    return result;
}

HRESULT ControlPersistence::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr) {
        return E_POINTER;
    }
    if (const HRESULT refused = Begin(E_UNEXPECTED); FAILED(refused)) {
        return refused;
    }
    return Alone([&] {
        ForeignPropertyBag entries(*bag, log);
        m_control.ReadProperties(entries);
        m_isDirty = false;
    });
}

HRESULT ControlPersistence::Load(IStream* stream) {
    if (stream == nullptr) {
        return E_POINTER;
    }
    if (const HRESULT refused = Begin(E_UNEXPECTED); FAILED(refused)) {
        return refused;
    }
    return Alone([&] { ReadFrom(*stream); });
}

HRESULT ControlPersistence::Save(IPropertyBag* bag, bool clearDirty) {
    if (bag == nullptr) {
        return E_POINTER;
    }
    return Alone([&] {
        ForeignPropertyBag entries(*bag);
        m_control.WriteProperties(entries);
        m_isDirty = m_isDirty && !clearDirty;
    });
}

HRESULT ControlPersistence::Save(IStream* stream, bool clearDirty) {
    if (stream == nullptr) {
        return E_POINTER;
    }
    return Alone([&] {
        WriteTo(*stream);
        m_isDirty = m_isDirty && !clearDirty;
    });
}

HRESULT ControlPersistence::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr) {
        return E_POINTER;
    }
    return Alone([&] {
        MemoryPropertyBag bag;
        m_control.WriteProperties(bag);
        size->QuadPart = EncodeStreamedBag(bag).size();
    });
}

void ControlPersistence::ReadFrom(IStream& stream) {
    auto bag =
        ReadStreamedBag([&](std::span<std::byte> bytes) { return ReadBytes(stream, bytes); });
    if (bag) {
        m_control.ReadProperties(*bag);
    }
    m_isDirty = false;
}

// Everything is there before the first byte goes out.
void ControlPersistence::WriteTo(IStream& stream) {
    MemoryPropertyBag bag;
    m_control.WriteProperties(bag);
    WriteBytes(stream, EncodeStreamedBag(bag));
}

HRESULT ControlPersistence::InitNew(IStorage* storage) {
    if (storage == nullptr) {
        return E_POINTER;
    }
    if (const HRESULT refused = Begin(CO_E_ALREADYINITIALIZED); FAILED(refused)) {
        return refused;
    }
    m_storage = storage;
    m_state = StorageState::Normal;
    m_isDirty = true;
    return S_OK;
}

HRESULT ControlPersistence::Load(IStorage* storage) {
    if (storage == nullptr) {
        return E_POINTER;
    }
    if (const HRESULT refused = Begin(CO_E_ALREADYINITIALIZED); FAILED(refused)) {
        return refused;
    }
    ComPtr<IStream> stream;
    const HRESULT opened =
        storage->OpenStream(StreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream);
    // A storage without the stream was saved by a control that had nothing to keep.
    if (FAILED(opened) && opened != STG_E_FILENOTFOUND) {
        return opened;
    }
    m_storage = storage;
    m_state = StorageState::Normal;
    return stream ? Alone([&] { ReadFrom(*stream.Get()); }) : S_OK;
}

// A control that was loaded from elsewhere has no storage of its own, but can be copied to one.
HRESULT ControlPersistence::Save(IStorage* storage, bool isOwn) {
    const ComPtr<IStorage> target(storage == nullptr && isOwn ? m_storage.Get() : storage);
    if (target == nullptr) {
        return E_POINTER;
    }
    if (m_state == StorageState::Saved || m_state == StorageState::HandsOff) {
        return E_UNEXPECTED;
    }
    return Alone([&] {
        ComPtr<IStream> stream;
        ThrowIfFailed(target->CreateStream(
            StreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream));
        WriteTo(*stream.Get());
        m_state = StorageState::Saved;
        m_hasSaved = true;
        m_savedOwn = isOwn;
    });
}

HRESULT ControlPersistence::SaveCompleted(IStorage* storage) {
    if (m_state == StorageState::None) {
        return E_UNEXPECTED;
    }
    if (m_state == StorageState::HandsOff && storage == nullptr) {
        return E_INVALIDARG;
    }
    // A copy that was saved elsewhere leaves the changes unsaved.
    if (m_hasSaved && (m_savedOwn || storage != nullptr)) {
        m_isDirty = false;
    }
    if (storage != nullptr) {
        m_storage = storage;
    }
    m_hasSaved = false;
    m_state = StorageState::Normal;
    return S_OK;
}

HRESULT ControlPersistence::HandsOff() {
    if (m_state == StorageState::None) {
        return E_UNEXPECTED;
    }
    m_storage.Reset();
    m_state = StorageState::HandsOff;
    return S_OK;
}

}  // namespace krv::windows
