#include "cli/RecordingServer.h"

#include <algorithm>
#include <span>

#include "common/Crc32.h"
#include "common/Error.h"
#include "common/ScopeExit.h"

namespace krv::cli {

class RecordingServer::RecordingArb final : public ports::ArbWaveform {
    using Codes = std::span<const std::int16_t>;

    void Note(const char* channel, const std::string& name, Codes codes) {
        if (m_sent != nullptr) {
            m_sent->push_back({channel, name, codes.size(), CodesCrc32(codes)});
        }
    }
    // Throws Error before anything is sent.
    void RequireRoom(std::uint64_t points) const {
        const auto& room = m_destination->roomPoints;
        if (room && points > *room) {
            throw Error(ErrorNumber::OutOfMemory,
                        "The waveform has " + std::to_string(points) +
                            " points, and the instrument's memory has room for " +
                            std::to_string(*room) +
                            ".  Nothing has been sent.  krv files lists the waveforms in the "
                            "memory, and deletes them.");
        }
    }
    [[nodiscard]] auto Metered(std::size_t bytes) {
        m_meter.Begin(bytes);
        return ScopeExit([this] { m_meter.End(); });
    }

 public:
    // Null notes nothing.
    RecordingArb(std::shared_ptr<ports::ArbWaveform> arb, TransferMeter& meter,
                 std::shared_ptr<const Destination> destination,
                 std::shared_ptr<std::vector<SentArray>> sent)
        : m_arb(std::move(arb)),
          m_meter(meter),
          m_destination(std::move(destination)),
          m_sent(std::move(sent)) {}

    bool HasDualArbOption() override { return m_arb->HasDualArbOption(); }
    bool ArbFileSelected() override {
        if (m_destination->release) {
            m_destination->release();
        }
        return m_arb->ArbFileSelected();
    }
    std::string SelectedArbFile() override { return m_arb->SelectedArbFile(); }

    void DownloadIQ(const std::string& name, Codes iCodes, Codes qCodes,
                    std::int32_t flags) override {
        RequireRoom(std::max(iCodes.size(), qCodes.size()));
        const ScopeExit end = Metered(iCodes.size_bytes() + qCodes.size_bytes());
        m_arb->DownloadIQ(name, iCodes, qCodes, flags);
        Note("i", name, iCodes);
        if (!qCodes.empty()) {
            Note("q", name, qCodes);
        }
    }
    void DownloadInterleaved(const std::string& name, Codes iqCodes, std::int32_t flags) override {
        RequireRoom((iqCodes.size() + 1) / 2);
        const ScopeExit end = Metered(iqCodes.size_bytes());
        m_arb->DownloadInterleaved(name, iqCodes, flags);
        Note("iq", name, iqCodes);
    }
    void DownloadMarkers(const std::string& name, Codes markers, std::int32_t flags) override {
        const ScopeExit end = Metered(markers.size_bytes());
        m_arb->DownloadMarkers(name, markers, flags);
        Note("markers", name, markers);
    }

 private:
    std::shared_ptr<ports::ArbWaveform> m_arb;
    TransferMeter& m_meter;
    std::shared_ptr<const Destination> m_destination;
    std::shared_ptr<std::vector<SentArray>> m_sent;
};

std::shared_ptr<ports::ArbWaveform> RecordingServer::Arb() {
    const auto arb = m_server->Arb();
    return arb ? std::make_shared<RecordingArb>(arb, m_meter, m_destination,
                                                m_notes ? m_sent : nullptr)
               : nullptr;
}

}  // namespace krv::cli
