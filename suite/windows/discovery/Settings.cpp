#include "suite/windows/discovery/Settings.h"

#include "suite/InstrumentSearch.h"
#include "suite/windows/discovery/KeyedCollection.h"

namespace krv::suitecom {
namespace {

using Microsoft::WRL::ComPtr;
using windows::MakeCom;
using windows::NewText;

class IOSettingsObject final : public SuiteObject<ICvnIOSettings> {
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
        return Guard().Run([&] { m_session = session; });
    }
    HRESULT STDMETHODCALLTYPE putref_IO(IDispatch* session) override { return put_IO(session); }
    HRESULT STDMETHODCALLTYPE get_HostName(BSTR* name) override {
        return Guard().Answer(name, [&] { return NewText(m_hostName); });
    }
    HRESULT STDMETHODCALLTYPE put_HostName(BSTR name) override {
        return Guard().Run([&] { m_hostName = windows::TextOf(name); });
    }

 private:
    std::string m_type;
    std::string m_hostName = server::LocalHostName;
    const ComPtr<KeyedCollection> m_instruments;
    const ComPtr<KeyedCollection> m_configurations;
    ComPtr<IDispatch> m_session;
};

class SerialConfiguration final : public SuiteObject<ICvnRS232Config> {
 public:
    SerialConfiguration() : SuiteObject(ProgId::RS232Config) {}

    HRESULT STDMETHODCALLTYPE get_Port(LONG* port) override { return Get(m_port, port); }
    HRESULT STDMETHODCALLTYPE put_Port(LONG port) override { return Put(port, m_port); }
    HRESULT STDMETHODCALLTYPE get_BaudRate(LONG* rate) override { return Get(m_baudRate, rate); }
    HRESULT STDMETHODCALLTYPE put_BaudRate(LONG rate) override { return Put(rate, m_baudRate); }
    HRESULT STDMETHODCALLTYPE get_DataBits(LONG* bits) override { return Get(m_dataBits, bits); }
    HRESULT STDMETHODCALLTYPE put_DataBits(LONG bits) override { return Put(bits, m_dataBits); }
    HRESULT STDMETHODCALLTYPE get_Handshake(LONG* handshake) override {
        return Get(m_handshake, handshake);
    }
    HRESULT STDMETHODCALLTYPE put_Handshake(LONG handshake) override {
        return Put(handshake, m_handshake);
    }

 private:
    HRESULT Get(LONG setting, LONG* value) const {
        return Guard().Answer(value, [&] { return setting; });
    }
    static HRESULT Put(LONG value, LONG& setting) {
        setting = value;
        return S_OK;
    }

    LONG m_port = 1;
    LONG m_baudRate = 9600;
    LONG m_dataBits = 8;
    LONG m_handshake = 0;
};

}  // namespace

IUnknown* NewIOSettings() {
    return NewObject<IOSettingsObject>();
}

IUnknown* NewRS232Config() {
    return NewObject<SerialConfiguration>();
}

}  // namespace krv::suitecom
