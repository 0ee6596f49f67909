// The connection settings of the suite's discovery component, and the serial configuration in them.
// The objects are shared by reference: the discovery control works on the one that it was given.
// Every operation throws Error with the component's description.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "common/PropertyBag.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::ports {

// The settings of one kind of interface.
class InterfaceConfiguration {
 public:
    virtual ~InterfaceConfiguration() = default;
};

class RS232Config : public InterfaceConfiguration {
 public:
    // Port and handshake are codes of the serial library.
    virtual void SetPortCode(std::int32_t port) = 0;
    virtual void SetBaudRate(std::int32_t baudRate) = 0;
    virtual void SetDataBits(std::int32_t dataBits) = 0;
    virtual void SetHandshakeCode(std::int32_t handshake) = 0;
};

class IOSettings {
 public:
    virtual ~IOSettings() = default;
    // The class of instruments that the discovery control offers.
    virtual void SetInstrumentType(const std::string& type) = 0;
    // Adds to the collections SupportedInstruments and InterfaceConfigurations. Each throws Error
    // when the key is taken.
    virtual void AddSupportedInstrument(const std::string& model, const std::string& key) = 0;
    virtual void AddInterfaceConfiguration(
        const std::shared_ptr<InterfaceConfiguration>& configuration, const std::string& key) = 0;
    // The session that the user chose; null when not connected.
    virtual std::shared_ptr<IoSession> IO() = 0;
    virtual void SetIO(const std::shared_ptr<IoSession>& session) = 0;
    // The computer that the instrument is attached to.
    virtual std::string HostName() = 0;

    // Into and out of a bag that holds other objects' entries, too, under names of the settings'
    // own: everything above, and of the session what it takes to connect again.
    virtual void WriteProperties(PropertyBag& bag) = 0;
    // The bag may come from anywhere. Connects to the saved session's instrument when all entries
    // have been read and are valid, within a few seconds. Throws Error, and changes and connects
    // nothing, for anything else; an instrument that doesn't answer leaves the settings without a
    // session.
    virtual void ReadProperties(PropertyBag& bag) = 0;
};

}  // namespace krv::ports
