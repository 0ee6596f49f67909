// ControlInDocuments: toolbar controls that documents load and save, with the suite registered.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "common/MemoryPropertyBag.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/ExcelProgram.h"
#include "tests/windows/support/RegisteredLibrary.h"
#include "tests/windows/support/TestContainer.h"
#include "windows/automation/PropertyBags.h"

namespace krv::tests {

inline Microsoft::WRL::ComPtr<IStream> NewStream() {
    Microsoft::WRL::ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    return stream;
}

inline void GoToStart(IStream& stream) {
    stream.Seek({}, STREAM_SEEK_SET, nullptr);
}

inline Microsoft::WRL::ComPtr<IStorage> NewStorage() {
    Microsoft::WRL::ComPtr<ILockBytes> memory;
    CreateILockBytesOnHGlobal(nullptr, TRUE, &memory);
    Microsoft::WRL::ComPtr<IStorage> storage;
    StgCreateDocfileOnILockBytes(memory.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                 0, &storage);
    return storage;
}

// A control in the program's document, from loading to closing.
class LoadedControl {
 public:
    using Loading = std::function<HRESULT(IUnknown* control)>;

    // A new control without a loading. The host hands the application over, as add-ins do.
    explicit LoadedControl(const ExcelProgram& program, const Loading& load = {})
        : m_control(TestedLibrary::Control().Create(__uuidof(::KRVControl))),
          m_container(m_control.Object(), program.Document().Get()) {
        m_loaded = load ? load(m_control.Object()) : As<IPersistStreamInit>()->InitNew();
        m_control.PutObject(L"ConnectedApplication", program.Application());
        m_control.Call(L"UpdateConnectedStatus");
    }

    [[nodiscard]] HRESULT Loaded() const { return m_loaded; }
    template <class Interface>
    [[nodiscard]] Microsoft::WRL::ComPtr<Interface> As() const {
        return m_container.As<Interface>();
    }

 private:
    windows::LateBound m_control;
    TestContainer m_container;
    HRESULT m_loaded = S_OK;
};

class ControlInDocuments : public ControlTest {
 protected:
    // As a document keeps a control that was connected to the address.
    static MemoryPropertyBag BagFor(const std::string& address) {
        MemoryPropertyBag bag;
        bag.Write("DataCWritten", std::int32_t{1});
        bag.Write("dataTransferSaved", true);
        bag.Write("IOSettingWritten", true);
        bag.Write("ioHostName", std::string("My Computer"));
        bag.Write("ioAddress", address);
        return bag;
    }
    static LoadedControl::Loading From(PropertyBag& bag) {
        return [&bag](IUnknown* control) {
            const windows::LentPropertyBag lent(bag);
            return Query<IPersistPropertyBag>(control)->Load(lent.Object(), nullptr);
        };
    }
    static MemoryPropertyBag SavedBag(const LoadedControl& control) {
        MemoryPropertyBag bag;
        const windows::LentPropertyBag lent(bag);
        EXPECT_EQ(control.As<IPersistPropertyBag>()->Save(lent.Object(), TRUE, TRUE), S_OK);
        return bag;
    }

    void ExpectConnected(const std::string& address) {
        EXPECT_EQ(m_office->Button("Connected"),
                  "enabled Connected to M7718C Signal Generator at " + address);
        EXPECT_EQ(m_office->Button("Connect"), "hidden");
        EXPECT_EQ(m_office->Button("PutData"), "enabled Download Arb Waveform Data");
        EXPECT_TRUE(m_office->Button("Settings").starts_with("enabled"));
    }
    void ExpectUnconnected() {
        EXPECT_EQ(m_office->Button("Connect"), "enabled Connect to TQL/KRV Signal Generator");
        EXPECT_EQ(m_office->Button("Connected"), "hidden");
        EXPECT_EQ(m_office->Button("PutData"), "disabled Download Arb Waveform Data");
        EXPECT_EQ(Boxes.Texts(), std::vector<std::string>{});
    }

    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
    std::optional<ExcelProgram> m_office{std::in_place};
};

}  // namespace krv::tests
