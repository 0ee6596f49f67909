// The suite's instrument server, over automation, with the objects that it hands out.
#pragma once

#include <utility>

#include "ports/suite/KRVServer.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

class AutomationServer final : public ports::KRVServer, public AutomationPeer {
 public:
    explicit AutomationServer(LateBound server) : m_server(std::move(server)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_server.Object(); }

    std::shared_ptr<ports::ConnectedInstrument> Instrument() override;
    std::shared_ptr<ports::ArbWaveform> Arb() override;
    std::vector<std::string> InstalledOptions() override;
    std::string Model() override;
    void PrepareForCapture() override;
    std::string ModelName() override;
    void SaveScreenImage(const std::string& file, std::int32_t format) override;
    std::shared_ptr<ports::InstrumentOptions> Options() override;
    std::vector<std::string> SupportedModels() override;
    // Throws Error 13 for a session that isn't one of the suite's.
    void SetInstrumentSession(const std::shared_ptr<ports::IoSession>& session) override;

 private:
    // An object of the server that is always there; throws Error 91 when it isn't.
    [[nodiscard]] LateBound Child(const wchar_t* name) const;

    LateBound m_server;
};

}  // namespace krv::windows
