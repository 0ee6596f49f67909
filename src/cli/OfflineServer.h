// OfflineServer: an instrument server without an instrument. It knows the model that waveforms are
// converted for; everything that would need an instrument throws Error.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::cli {

class OfflineServer final : public ports::InstrumentServer {
 public:
    explicit OfflineServer(std::string model)
        : m_instrument(std::make_shared<OfflineInstrument>(std::move(model))) {}

    std::shared_ptr<ports::ConnectedInstrument> Instrument() override { return m_instrument; }
    std::shared_ptr<ports::ArbWaveform> Arb() override { Refuse(); }
    std::vector<std::string> InstalledOptions() override { Refuse(); }

 private:
    [[noreturn]] static void Refuse() {
        throw Error(ErrorNumber::ObjectNotSet, "No instrument is connected.");
    }

    class OfflineInstrument final : public ports::ConnectedInstrument {
     public:
        explicit OfflineInstrument(std::string model) : m_model(std::move(model)) {}
        std::string Model() override { return m_model; }
        std::string FirmwareRevision() override { Refuse(); }
        std::string SerialNumber() override { Refuse(); }
        std::shared_ptr<ports::IoSession> IO() override { return nullptr; }
        bool FileExists(const std::string&) override { Refuse(); }
        ports::InstrumentError ReadError() override { Refuse(); }
        Value CaptureState() override { Refuse(); }
        void RestoreState(const Value&) override { Refuse(); }

     private:
        std::string m_model;
    };

    std::shared_ptr<OfflineInstrument> m_instrument;
};

}  // namespace krv::cli
