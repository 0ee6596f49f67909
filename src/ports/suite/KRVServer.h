// KRVServer: the instrument server as the toolbar control and its host adapters use it, besides
// what the download needs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/suite/ScreenImageServer.h"

namespace krv::ports {

class InstrumentOptions {
 public:
    virtual ~InstrumentOptions() = default;
    // The arbitrary waveform (baseband) generator is installed.
    virtual bool ArbInstalled() = 0;
};

class KRVServer : public ScreenImageServer {
 public:
    // The connected instrument's model as the server knows it since it was connected; nothing is
    // asked of the instrument, so that a toolbar can be redrawn at any time.
    virtual std::string Model() = 0;
    // Never null.
    virtual std::shared_ptr<InstrumentOptions> Options() = 0;
    // In the server's order; needs no instrument.
    virtual std::vector<std::string> SupportedModels() = 0;
    // The session that the instrument is talked to through from now on; null disconnects.
    virtual void SetInstrumentSession(const std::shared_ptr<IoSession>& session) = 0;
};

}  // namespace krv::ports
