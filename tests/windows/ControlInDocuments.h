// ControlInDocuments: toolbar controls that documents load and save, with the suite registered.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>

#include <optional>
#include <string>
#include <vector>

#include "common/MemoryPropertyBag.h"
#include "tests/windows/DocumentHost.h"
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

class ControlInDocuments : public ControlTest {
 protected:
    ControlInDocuments() { EXPECT_EQ(TestedLibrary::Suite().Register(), S_OK); }
    ~ControlInDocuments() override {
        m_office.reset();
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0);
        EXPECT_EQ(TestedLibrary::Suite().Unregister(), S_OK);
    }

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
    static DocumentHost::Loading From(PropertyBag& bag) {
        return [&bag](IUnknown* control) {
            const windows::LentPropertyBag lent(bag);
            return Query<IPersistPropertyBag>(control)->Load(lent.Object(), nullptr);
        };
    }
    static MemoryPropertyBag SavedBag(const DocumentHost& host) {
        MemoryPropertyBag bag;
        const windows::LentPropertyBag lent(bag);
        EXPECT_EQ(host.Query<IPersistPropertyBag>()->Save(lent.Object(), TRUE, TRUE), S_OK);
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

    std::optional<OfficeProgram> m_office{std::in_place};
};

}  // namespace krv::tests
