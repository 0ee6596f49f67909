#include "suite/windows/discovery/Settings.h"

#include "suite/windows/SuiteObject.h"

namespace krv::suite {
namespace {

class RS232ConfigObject final : public SuiteObject<ICvnRS232Config> {
 public:
    RS232ConfigObject() : SuiteObject(ProgId::RS232Config) {}

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

IUnknown* NewRS232Config() {
    return NewObject<RS232ConfigObject>();
}

}  // namespace krv::suite
