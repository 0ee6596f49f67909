// The instrument server's roles, as far as the core calls them. Any conforming server will do: our
// own over TCP, one reached through automation, or a test's double.
//
// All calls block until the server returns and come from one thread. Each throws Error with the
// server's description when the instrument or the connection fails.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "common/Value.h"

namespace krv::ports {

// One entry of the instrument's error queue; number 0 means that the queue is empty.
struct InstrumentError {
    std::int32_t number = 0;
    std::string message;
};

// What a serial (RS-232) session offers in addition.
class SerialSession {
 public:
    virtual ~SerialSession() = default;
    // Bits per second.
    virtual std::int32_t BaudRate() = 0;
    virtual std::int32_t DataBits() = 0;
    // An enumeration: 2 means one and a half stop bits, 3 means two, anything else one.
    virtual std::int32_t StopBits() = 0;
};

// A live connection to an instrument.
class IoSession {
 public:
    virtual ~IoSession() = default;
    virtual std::string Address() = 0;
    // The connection is still there, as far as is known without asking the instrument. Never fails.
    virtual bool IsAlive() = 0;
    // The text that names the kind of connection in messages, e.g. "LAN"; empty when the session
    // can't say, and the address then stands for it.
    virtual std::string ConnectionKind() = 0;
    // The serial interface, owned by the session; null when the session is not serial.
    virtual SerialSession* Serial() = 0;
    // Returns the instrument to front-panel operation. Throws Error for a session that can't.
    virtual void ReturnToLocal() = 0;
};

class ConnectedInstrument {
 public:
    virtual ~ConnectedInstrument() = default;
    virtual std::string Model() = 0;
    virtual std::string FirmwareRevision() = 0;
    virtual std::string SerialNumber() = 0;
    // Null when not connected.
    virtual std::shared_ptr<IoSession> IO() = 0;
    // The instrument holds a file of this name.
    virtual bool FileExists(const std::string& name) = 0;
    // Takes the oldest error out of the instrument's queue.
    virtual InstrumentError ReadError() = 0;
    // The instrument's complete state, in a form that only the server reads.
    virtual Value CaptureState() = 0;
    // Puts a captured state back. Throws Error with the instrument's own error when the instrument
    // refuses it.
    virtual void RestoreState(const Value& state) = 0;
};

// The instrument's arbitrary-waveform object. Codes are 16-bit, in the machine's own byte order;
// the order on the wire is the server's business. The flags are always 0. Each download writes one
// named file into the instrument's waveform memory and takes its array whole.
class ArbWaveform {
 public:
    virtual ~ArbWaveform() = default;
    // Option R2X, the dual arbitrary waveform generator, is installed.
    virtual bool HasDualArbOption() = 0;
    // A waveform file is selected for playing, and its name.
    virtual bool ArbFileSelected() = 0;
    virtual std::string SelectedArbFile() = 0;
    // The Q array is empty where there is no separate Q source.
    virtual void DownloadIQ(const std::string& name, std::span<const std::int16_t> iCodes,
                            std::span<const std::int16_t> qCodes, std::int32_t flags) = 0;
    virtual void DownloadInterleaved(const std::string& name, std::span<const std::int16_t> iqCodes,
                                     std::int32_t flags) = 0;
    virtual void DownloadMarkers(const std::string& name, std::span<const std::int16_t> markers,
                                 std::int32_t flags) = 0;
};

class InstrumentServer {
 public:
    virtual ~InstrumentServer() = default;
    // The current instrument; never null.
    virtual std::shared_ptr<ConnectedInstrument> Instrument() = 0;
    virtual std::shared_ptr<ArbWaveform> Arb() = 0;
    // Names of the options that the instrument reports, e.g. "R2X".
    virtual std::vector<std::string> InstalledOptions() = 0;
};

}  // namespace krv::ports
