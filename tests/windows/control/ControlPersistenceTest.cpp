// The toolbar control in documents: saved and loaded by each interface, connected again to the same
// instrument, and from documents that were altered.
#include <array>
#include <chrono>
#include <span>

#include "tests/support/RunningGenerator.h"
#include "tests/windows/control/ControlInDocuments.h"
#include "windows/automation/ComObject.h"

namespace krv::tests {
namespace {

using Microsoft::WRL::ComPtr;
using windows::LateBound;
using windows::LentPropertyBag;

// A stream whose medium gives and takes a few bytes at a time, and then fails.
class WeakStream final : public windows::ComObject<IStream> {
 public:
    explicit WeakStream(IStream* inner, std::size_t bytes) : m_inner(inner), m_left(bytes) {}

    HRESULT STDMETHODCALLTYPE Read(void* target, ULONG size, ULONG* count) override {
        return Pass(size, [&](ULONG few) { return m_inner->Read(target, few, count); });
    }
    HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG size, ULONG* count) override {
        return Pass(size, [&](ULONG few) { return m_inner->Write(source, few, count); });
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                     ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Revert() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

 private:
    template <class Work>
    HRESULT Pass(ULONG size, const Work& work) {
        const ULONG few = std::min<ULONG>(size, 7);
        if (m_left < few) {
            return STG_E_MEDIUMFULL;
        }
        m_left -= few;
        return work(few);
    }

    ComPtr<IStream> m_inner;
    std::size_t m_left;
};

class ControlPersistenceTest : public ControlInDocuments {};

TEST_F(ControlPersistenceTest, ConnectsAgainFromWhatItSavedByEachInterface) {
    const RunningGenerator generator;
    MemoryPropertyBag first = BagFor(generator.Address());
    MemoryPropertyBag bag;
    const auto stream = NewStream();
    const auto storage = NewStorage();
    {
        const LoadedControl host(*m_office, From(first));
        ExpectConnected(generator.Address());
        bag = SavedBag(host);
        EXPECT_EQ(bag.Read("DataCWritten", 0.0), Value(std::int32_t{1}));
        EXPECT_EQ(bag.Read("dataTransferSaved", false), Value(true));
        EXPECT_EQ(bag.Read("ioAddress", 0.0), Value(generator.Address()));
        EXPECT_EQ(host.As<IPersistStreamInit>()->Save(stream.Get(), TRUE), S_OK);
        stream->Write("next", 4, nullptr);
        EXPECT_EQ(host.As<IPersistStorage>()->Save(storage.Get(), FALSE), S_OK);
        EXPECT_EQ(host.As<IPersistStorage>()->SaveCompleted(nullptr), S_OK);
    }
    GoToStart(*stream.Get());
    const LoadedControl::Loading loadings[] = {
        From(bag),
        [&](IUnknown* control) { return Query<IPersistStreamInit>(control)->Load(stream.Get()); },
        [&](IUnknown* control) { return Query<IPersistStorage>(control)->Load(storage.Get()); }};
    for (const auto& load : loadings) {
        m_office.emplace();
        const LoadedControl host(*m_office, load);
        EXPECT_EQ(host.Loaded(), S_OK);
        ExpectConnected(generator.Address());
        EXPECT_EQ(SavedBag(host).Entries(), bag.Entries());
    }
    std::array<char, 4> next{};
    stream->Read(next.data(), 4, nullptr);
    EXPECT_EQ(std::string(next.data(), 4), "next") << "takes its own bytes and no more";
}

TEST_F(ControlPersistenceTest, StaysUnconnectedButRemembersWhereTheInstrumentWas) {
    std::string address;
    {
        const RunningGenerator gone;
        address = gone.Address();
    }
    MemoryPropertyBag bag = BagFor(address);
    {
        const LoadedControl host(*m_office, From(bag));
        EXPECT_EQ(host.Loaded(), S_OK);
        ExpectUnconnected();
        EXPECT_EQ(SavedBag(host).Read("ioAddress", 0.0), Value(address));
    }
}

// An object in the bag, and a bag that calls the control back while it is read.
class CallingBag final : public windows::ComObject<IPropertyBag> {
 public:
    explicit CallingBag(IUnknown* control) : m_control(control) {}
    std::vector<HRESULT> Answers;

    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
        ComPtr<IPersistPropertyBag> persistence;
        m_control->QueryInterface(IID_IPersistPropertyBag,
                                  reinterpret_cast<void**>(persistence.GetAddressOf()));
        Answers.push_back(persistence->Load(this, nullptr));
        Answers.push_back(persistence->Save(this, TRUE, TRUE));
        V_VT(value) = VT_UNKNOWN;
        V_UNKNOWN(value) = static_cast<IPropertyBag*>(this);
        AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR, VARIANT*) override { return S_OK; }

 private:
    IUnknown* m_control;
};

TEST_F(ControlPersistenceTest, RefusesABagThatLeadsBackToIt) {
    std::vector<HRESULT> answers;
    {
        const LoadedControl host(*m_office, [&](IUnknown* control) {
            const auto bag = windows::MakeCom<CallingBag>(control);
            const HRESULT loaded = Query<IPersistPropertyBag>(control)->Load(bag.Get(), nullptr);
            answers = bag->Answers;
            return loaded;
        });
        EXPECT_EQ(host.Loaded(), S_OK);
        ExpectUnconnected();
    }
    EXPECT_EQ(answers, (std::vector<HRESULT>{E_UNEXPECTED, E_UNEXPECTED}));
}

TEST_F(ControlPersistenceTest, TakesAnAlteredStreamForNoneAndTellsOfAMediumThatFails) {
    const RunningGenerator generator;
    MemoryPropertyBag bag = BagFor(generator.Address());
    const auto saved = NewStream();
    ULARGE_INTEGER most{};
    {
        const LoadedControl host(*m_office, From(bag));
        EXPECT_EQ(host.As<IPersistStreamInit>()->GetSizeMax(&most), S_OK);
        const auto full = windows::MakeCom<WeakStream>(saved.Get(), std::size_t{30});
        EXPECT_EQ(host.As<IPersistStreamInit>()->Save(full.Get(), TRUE), STG_E_MEDIUMFULL);
        GoToStart(*saved.Get());
        const auto slow = windows::MakeCom<WeakStream>(saved.Get(), std::size_t{most.LowPart});
        EXPECT_EQ(host.As<IPersistStreamInit>()->Save(slow.Get(), TRUE), S_OK);
    }
    const auto load = [&](IStream* stream) {
        m_office.emplace();
        const LoadedControl host(*m_office, [&](IUnknown* control) {
            return Query<IPersistStreamInit>(control)->Load(stream);
        });
        if (m_office->Button("Connected") == "hidden") {
            ExpectUnconnected();
        } else {
            ExpectConnected(generator.Address());
        }
        return std::pair(host.Loaded(), m_office->Button("Connected") != "hidden");
    };
    using Outcome = std::pair<HRESULT, bool>;
    GoToStart(*saved.Get());
    EXPECT_EQ(load(windows::MakeCom<WeakStream>(saved.Get(), std::size_t{most.LowPart}).Get()),
              Outcome(S_OK, true));
    GoToStart(*saved.Get());
    EXPECT_EQ(load(windows::MakeCom<WeakStream>(saved.Get(), std::size_t{30}).Get()),
              Outcome(STG_E_MEDIUMFULL, false));
    LARGE_INTEGER middle{};
    middle.QuadPart = static_cast<LONGLONG>(most.QuadPart / 2);
    saved->Seek(middle, STREAM_SEEK_SET, nullptr);
    saved->Write("?", 1, nullptr);
    GoToStart(*saved.Get());
    EXPECT_EQ(load(saved.Get()), Outcome(S_OK, false)) << "altered";
    ULARGE_INTEGER shorter{};
    shorter.QuadPart = most.QuadPart / 2;
    saved->SetSize(shorter);
    GoToStart(*saved.Get());
    EXPECT_EQ(load(saved.Get()), Outcome(S_OK, false)) << "cut off";
}

TEST_F(ControlPersistenceTest, IsMadeNewOrLoadedOnce) {
    MemoryPropertyBag bag;
    const auto storage = NewStorage();
    const auto again = [&](const LoadedControl& host) {
        const LentPropertyBag lent(bag);
        EXPECT_EQ(host.As<IPersistStreamInit>()->InitNew(), E_UNEXPECTED);
        EXPECT_EQ(host.As<IPersistPropertyBag>()->InitNew(), E_UNEXPECTED);
        EXPECT_EQ(host.As<IPersistPropertyBag>()->Load(lent.Object(), nullptr), E_UNEXPECTED);
        EXPECT_EQ(host.As<IPersistStreamInit>()->Load(NewStream().Get()), E_UNEXPECTED);
        EXPECT_EQ(host.As<IPersistStorage>()->InitNew(storage.Get()), CO_E_ALREADYINITIALIZED);
        EXPECT_EQ(host.As<IPersistStorage>()->Load(storage.Get()), CO_E_ALREADYINITIALIZED);
    };
    again(LoadedControl(*m_office));
    again(LoadedControl(*m_office, From(bag)));
    const LoadedControl host(*m_office);
    EXPECT_EQ(host.As<IPersistPropertyBag>()->Load(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(host.As<IPersistStreamInit>()->Save(nullptr, TRUE), E_POINTER);
    EXPECT_EQ(host.As<IPersistStorage>()->Save(nullptr, FALSE), E_POINTER);
}

TEST_F(ControlPersistenceTest, KnowsWhetherItHasChanged) {
    MemoryPropertyBag bag = BagFor("sim://M7718C");
    const auto stream = NewStream();
    {
        const LoadedControl host(*m_office, From(bag));
        const auto state = host.As<IPersistStreamInit>();
        EXPECT_EQ(state->IsDirty(), S_FALSE) << "loaded";
    }
    const LateBound plain = NewControl();
    const auto state = Query<IPersistStreamInit>(plain.Object());
    EXPECT_EQ(state->IsDirty(), S_FALSE);
    EXPECT_EQ(state->InitNew(), S_OK);
    EXPECT_EQ(state->IsDirty(), S_OK) << "what was never saved is worth saving";
    EXPECT_EQ(state->Save(stream.Get(), FALSE), S_OK);
    EXPECT_EQ(state->IsDirty(), S_OK) << "a copy";
    EXPECT_EQ(state->Save(stream.Get(), TRUE), S_OK);
    EXPECT_EQ(state->IsDirty(), S_FALSE);
    plain.PutObject(L"ConnectedApplication", m_office->Application());
    EXPECT_EQ(state->IsDirty(), S_OK) << "it has an adapter now";
    plain.PutObject(L"ConnectedApplication", nullptr);
}

TEST_F(ControlPersistenceTest, KeepsTheRulesOfItsStorage) {
    const auto own = NewStorage();
    const auto other = NewStorage();
    const LoadedControl host(*m_office, [&](IUnknown* control) {
        return Query<IPersistStorage>(control)->InitNew(own.Get());
    });
    const auto persistence = host.As<IPersistStorage>();
    EXPECT_EQ(persistence->IsDirty(), S_OK);
    // A copy elsewhere leaves the document's own storage unsaved.
    EXPECT_EQ(persistence->Save(other.Get(), FALSE), S_OK);
    EXPECT_EQ(persistence->Save(other.Get(), FALSE), E_UNEXPECTED) << "before SaveCompleted";
    EXPECT_EQ(persistence->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(persistence->IsDirty(), S_OK);
    EXPECT_EQ(persistence->Save(nullptr, TRUE), S_OK);
    EXPECT_EQ(persistence->SaveCompleted(nullptr), S_OK);
    EXPECT_EQ(persistence->IsDirty(), S_FALSE);

    EXPECT_EQ(persistence->HandsOffStorage(), S_OK);
    EXPECT_EQ(persistence->Save(other.Get(), FALSE), E_UNEXPECTED);
    EXPECT_EQ(persistence->SaveCompleted(nullptr), E_INVALIDARG);
    EXPECT_EQ(persistence->SaveCompleted(other.Get()), S_OK);
    EXPECT_EQ(persistence->Save(nullptr, TRUE), S_OK);
    // Saving under another name: the storage is given up in between.
    EXPECT_EQ(persistence->HandsOffStorage(), S_OK);
    EXPECT_EQ(persistence->SaveCompleted(own.Get()), S_OK);

    const auto fresh = NewControl();
    EXPECT_EQ(Query<IPersistStorage>(fresh.Object())->SaveCompleted(nullptr), E_UNEXPECTED);
    EXPECT_EQ(Query<IPersistStorage>(fresh.Object())->HandsOffStorage(), E_UNEXPECTED);
}

}  // namespace
}  // namespace krv::tests
