#include "windows/suite/AutomationSettings.h"

#include "common/Error.h"
#include "windows/automation/PropertyBags.h"
#include "windows/automation/VariantValue.h"
#include "windows/suite/AutomationSession.h"

namespace krv::windows {

void AutomationRS232Config::SetPortCode(std::int32_t port) {
    m_configuration.Put(L"Port", ToVariant(port));
}

void AutomationRS232Config::SetBaudRate(std::int32_t baudRate) {
    m_configuration.Put(L"BaudRate", ToVariant(baudRate));
}

void AutomationRS232Config::SetDataBits(std::int32_t dataBits) {
    m_configuration.Put(L"DataBits", ToVariant(dataBits));
}

void AutomationRS232Config::SetHandshakeCode(std::int32_t handshake) {
    m_configuration.Put(L"Handshake", ToVariant(handshake));
}

void AutomationIOSettings::SetInstrumentType(const std::string& type) {
    m_settings.Put(L"InstrumentType", ToVariant(type));
}

void AutomationIOSettings::AddSupportedInstrument(const std::string& model,
                                                  const std::string& key) {
    m_settings.GetObject(L"SupportedInstruments").Call(L"Add", {ToVariant(model), ToVariant(key)});
}

void AutomationIOSettings::AddInterfaceConfiguration(
    const std::shared_ptr<ports::InterfaceConfiguration>& configuration, const std::string& key) {
    if (!configuration) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    m_settings.GetObject(L"InterfaceConfigurations")
        .Call(L"Add", {_variant_t(AutomationBehind(*configuration)), ToVariant(key)});
}

std::shared_ptr<ports::IoSession> AutomationIOSettings::IO() {
    return SessionOf(m_settings.GetObject(L"IO"));
}

void AutomationIOSettings::SetIO(const std::shared_ptr<ports::IoSession>& session) {
    m_settings.PutObject(L"IO", AutomationOf(session));
}

std::string AutomationIOSettings::HostName() {
    return m_settings.GetText(L"HostName");
}

void AutomationIOSettings::WriteProperties(PropertyBag& bag) {
    SaveObject(m_settings.Object(), bag);
}

void AutomationIOSettings::ReadProperties(PropertyBag& bag) {
    LoadObject(m_settings.Object(), bag);
}

}  // namespace krv::windows
