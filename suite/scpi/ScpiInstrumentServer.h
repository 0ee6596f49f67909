// ScpiInstrumentServer: the instrument server over a transport, speaking the generator's SCPI
// commands. One thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/suite/ScreenImageServer.h"
#include "ports/suite/WaveformReadback.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

class ScpiInstrument;

class ScpiInstrumentServer final : public ports::ScreenImageServer {
 public:
    explicit ScpiInstrumentServer(TransportRegistry transports, TimeOuts timeOuts = {});
    // Ends its own session; an instrument that others still hold is then unconnected.
    ~ScpiInstrumentServer() override;
    ScpiInstrumentServer(const ScpiInstrumentServer&) = delete;
    ScpiInstrumentServer& operator=(const ScpiInstrumentServer&) = delete;

    // Ends the present session, opens one and identifies the instrument. Throws Error; the server
    // is then unconnected.
    void Connect(const std::string& address);
    // Ends the server's own session; an adopted one is only let go.
    void Disconnect() noexcept;
    // Uses from now on an instrument whose connection belongs to another: neither Disconnect nor
    // the server's end closes it.
    void Adopt(std::shared_ptr<ScpiInstrument> instrument) noexcept;

    // Unconnected, the instrument's IO is null and everything that needs a session throws Error. So
    // it is after a failure on the way to the instrument: the session is closed, the error says
    // why, and Connect opens a new one.
    std::shared_ptr<ports::ConnectedInstrument> Instrument() override;
    std::shared_ptr<ports::ArbWaveform> Arb() override;
    std::vector<std::string> InstalledOptions() override;
    [[nodiscard]] std::shared_ptr<ports::WaveformReadback> Readback();
    // The instrument as it is reached, for commands that no port has.
    [[nodiscard]] const std::shared_ptr<ScpiInstrument>& ScpiAccess() const noexcept {
        return m_instrument;
    }

    // Nothing to prepare, as nothing may be lost before the user has agreed to a capture.
    void PrepareForCapture() override;
    std::string ModelName() override;
    // Lets the newer models capture their screen first. An older model's capture, which was made by
    // hand, is deleted once it is written: one that is found later is a new one. Throws Error 5 for
    // an unknown format code, 321 for an extension that isn't known, 75 when the file can't be
    // written, and what talking to the instrument throws; the file is then as it was.
    void SaveScreenImage(const std::string& file, std::int32_t format) override;

 private:
    [[nodiscard]] bool CapturesByHand() const;
    [[nodiscard]] std::string FetchCapture();

    TransportRegistry m_transports;
    TimeOuts m_timeOuts;
    std::shared_ptr<ScpiInstrument> m_instrument;
    bool m_adopted = false;
};

}  // namespace krv::suite
