// The connection settings, which keep themselves in a document's property bag.
#include <ocidl.h>

#include "common/Error.h"
#include "suite/discovery/SavedSettings.h"
#include "suite/windows/SuiteObject.h"
#include "suite/windows/discovery/KeyedCollection.h"
#include "suite/windows/discovery/Settings.h"
#include "suite/windows/server/SessionObject.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/PropertyBags.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"

namespace krv::suite {
namespace {

using Microsoft::WRL::ComPtr;
using suite::SavedSettings;
using windows::LateBound;
using windows::MakeCom;
using windows::NewText;

ComPtr<KeyedCollection> CollectionOf(const std::vector<SavedSettings::Model>& models) {
    auto collection = MakeCom<KeyedCollection>();
    for (const SavedSettings::Model& model : models) {
        windows::ThrowIfFailed(
            collection->Add(windows::ToVariant(model.name), windows::ToVariant(model.key)));
    }
    return collection;
}

LateBound ConfigurationOf(const SavedSettings::Serial& serial) {
    const LateBound configuration(windows::Adopt(NewRS232Config()).Get());
    configuration.Put(L"Port", windows::ToVariant(serial.port));
    configuration.Put(L"BaudRate", windows::ToVariant(serial.baudRate));
    configuration.Put(L"DataBits", windows::ToVariant(serial.dataBits));
    configuration.Put(L"Handshake", windows::ToVariant(serial.handshake));
    return configuration;
}

ComPtr<KeyedCollection> CollectionOf(const std::vector<SavedSettings::Serial>& configurations) {
    auto collection = MakeCom<KeyedCollection>();
    for (const SavedSettings::Serial& serial : configurations) {
        windows::ThrowIfFailed(collection->Add(_variant_t(ConfigurationOf(serial).Object()),
                                               windows::ToVariant(serial.key)));
    }
    return collection;
}

std::vector<SavedSettings::Model> ModelsIn(const KeyedCollection& collection) {
    std::vector<SavedSettings::Model> models;
    for (const KeyedCollection::Entry& entry : collection.Items()) {
        models.push_back({windows::ToUtf8(entry.key), windows::TextOf(entry.item)});
    }
    return models;
}

// Configurations of other interfaces than the serial one belong to components that can't be asked
// for what they hold.
std::vector<SavedSettings::Serial> ConfigurationsIn(const KeyedCollection& collection) {
    std::vector<SavedSettings::Serial> configurations;
    for (const KeyedCollection::Entry& entry : collection.Items()) {
        const LateBound configuration(entry.item);
        if (configuration.Has(L"BaudRate")) {
            configurations.push_back({windows::ToUtf8(entry.key), configuration.GetLong(L"Port"),
                                      configuration.GetLong(L"BaudRate"),
                                      configuration.GetLong(L"DataBits"),
                                      configuration.GetLong(L"Handshake")});
        }
    }
    return configurations;
}

class IOSettingsObject final : public SuiteObject<ICvnIOSettings, IPersistPropertyBag> {
 public:
    IOSettingsObject()
        : SuiteObject(ProgId::IOSettings),
          m_instruments(MakeCom<KeyedCollection>()),
          m_configurations(MakeCom<KeyedCollection>()) {}

    HRESULT STDMETHODCALLTYPE get_InstrumentType(BSTR* type) override {
        return Guard().Answer(type, [&] { return NewText(m_type); });
    }
    HRESULT STDMETHODCALLTYPE put_InstrumentType(BSTR type) override {
        return Guard().Run([&] { m_type = windows::TextOf(type); });
    }
    HRESULT STDMETHODCALLTYPE get_SupportedInstruments(IDispatch** instruments) override {
        return Guard().Answer(instruments, [&] { return ComPtr(m_instruments).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE get_InterfaceConfigurations(IDispatch** configurations) override {
        return Guard().Answer(configurations, [&] { return ComPtr(m_configurations).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE get_IO(IDispatch** session) override {
        return Guard().Answer(session, [&] { return ComPtr(m_session).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE put_IO(IDispatch* session) override {
        return Guard().Run([&] {
            m_session = session;
            m_unansweredAddress.clear();
        });
    }
    HRESULT STDMETHODCALLTYPE putref_IO(IDispatch* session) override { return put_IO(session); }
    HRESULT STDMETHODCALLTYPE get_HostName(BSTR* name) override {
        return Guard().Answer(name, [&] { return NewText(m_hostName); });
    }
    HRESULT STDMETHODCALLTYPE put_HostName(BSTR name) override {
        return Guard().Run([&] { m_hostName = windows::TextOf(name); });
    }
    HRESULT STDMETHODCALLTYPE get_LastAddress(BSTR* address) override {
        return Guard().Answer(address, [&] { return NewText(LastAddress()); });
    }

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) override {
        return Guard().Answer(id, [] { return __uuidof(IOSettings); });
    }
    HRESULT STDMETHODCALLTYPE InitNew() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override {
        return Guard().Run([&] {
            Require(bag);
            windows::ForeignPropertyBag entries(*bag, log);
            Take(suite::ReadSettings(entries));
        });
    }
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL, BOOL) override {
        return Guard().Run([&] {
            Require(bag);
            windows::ForeignPropertyBag entries(*bag);
            suite::WriteSettings({m_type, m_hostName, ModelsIn(*m_instruments.Get()),
                                  ConfigurationsIn(*m_configurations.Get()), LastAddress()},
                                 entries);
        });
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == IID_IPersistPropertyBag ? S_OK : SuiteObject::InterfaceSupportsErrorInfo(id);
    }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IPersist ? static_cast<IPersist*>(this) : SuiteObject::FindInterface(id);
    }

 private:
    static void Require(IPropertyBag* bag) {
        if (bag == nullptr) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
    }

    [[nodiscard]] std::string LastAddress() const {
        return m_session ? LateBound(m_session.Get()).GetText(L"Address") : m_unansweredAddress;
    }

    void Take(const SavedSettings& saved) {
        auto instruments = CollectionOf(saved.supportedModels);
        auto configurations = CollectionOf(saved.serialConfigurations);
        m_type = saved.instrumentType;
        m_hostName = saved.hostName;
        m_instruments = std::move(instruments);
        m_configurations = std::move(configurations);
        m_session.Reset();
        m_unansweredAddress = saved.address;
        if (!saved.address.empty()) {
            Connect();
        }
    }

    // An instrument that is switched off doesn't make the document's settings worthless.
    void Connect() {
        try {
            m_session = ReopenSession(m_unansweredAddress);
            m_unansweredAddress.clear();
        } catch (const Error&) {
            return;
        }
    }

    std::string m_type;
    std::string m_hostName = suite::LocalComputer;
    ComPtr<KeyedCollection> m_instruments;
    ComPtr<KeyedCollection> m_configurations;
    ComPtr<IDispatch> m_session;
    // Read from a document whose instrument didn't answer.
    std::string m_unansweredAddress;
};

}  // namespace

IUnknown* NewIOSettings() {
    return NewObject<IOSettingsObject>();
}

}  // namespace krv::suite
