// The suite's connection settings and serial configuration, over automation.
#pragma once

#include <utility>

#include "ports/suite/IOSettings.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationRS232Config final : public ports::RS232Config, public AutomationPeer {
 public:
    explicit AutomationRS232Config(LateBound configuration)
        : m_configuration(std::move(configuration)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_configuration.Object(); }

    void SetPortCode(std::int32_t port) override;
    void SetBaudRate(std::int32_t baudRate) override;
    void SetDataBits(std::int32_t dataBits) override;
    void SetHandshakeCode(std::int32_t handshake) override;

 private:
    LateBound m_configuration;
};

class AutomationIOSettings final : public ports::IOSettings, public AutomationPeer {
 public:
    explicit AutomationIOSettings(LateBound settings) : m_settings(std::move(settings)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_settings.Object(); }

    void SetInstrumentType(const std::string& type) override;
    void AddSupportedInstrument(const std::string& model, const std::string& key) override;
    // Throws Error 13 for a configuration that isn't one of the suite's, and so does SetIO for a
    // session.
    void AddInterfaceConfiguration(
        const std::shared_ptr<ports::InterfaceConfiguration>& configuration,
        const std::string& key) override;
    std::shared_ptr<ports::IoSession> IO() override;
    void SetIO(const std::shared_ptr<ports::IoSession>& session) override;
    std::string HostName() override;
    void WriteProperties(PropertyBag& bag) override;
    void ReadProperties(PropertyBag& bag) override;

 private:
    LateBound m_settings;
};

}  // namespace krv::windows
