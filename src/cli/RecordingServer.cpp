#include "cli/RecordingServer.h"

#include <span>

#include "common/Crc32.h"

namespace krv::cli {

class RecordingServer::RecordingArb final : public ports::ArbWaveform {
 public:
    using Codes = std::span<const std::int16_t>;

    RecordingArb(std::shared_ptr<ports::ArbWaveform> arb,
                 std::shared_ptr<std::vector<SentArray>> sent)
        : m_arb(std::move(arb)), m_sent(std::move(sent)) {}

    bool HasDualArbOption() override { return m_arb->HasDualArbOption(); }
    bool ArbFileSelected() override { return m_arb->ArbFileSelected(); }
    std::string SelectedArbFile() override { return m_arb->SelectedArbFile(); }

    void DownloadIQ(const std::string& name, Codes iCodes, Codes qCodes,
                    std::int32_t flags) override {
        Note("i", name, iCodes);
        if (!qCodes.empty()) {
            Note("q", name, qCodes);
        }
        m_arb->DownloadIQ(name, iCodes, qCodes, flags);
    }
    void DownloadInterleaved(const std::string& name, Codes iqCodes, std::int32_t flags) override {
        Note("iq", name, iqCodes);
        m_arb->DownloadInterleaved(name, iqCodes, flags);
    }
    void DownloadMarkers(const std::string& name, Codes markers, std::int32_t flags) override {
        Note("markers", name, markers);
        m_arb->DownloadMarkers(name, markers, flags);
    }

 private:
    void Note(const char* channel, const std::string& name, Codes codes) {
        m_sent->push_back({channel, name, codes.size(), CodesCrc32(codes)});
    }

    std::shared_ptr<ports::ArbWaveform> m_arb;
    std::shared_ptr<std::vector<SentArray>> m_sent;
};

std::shared_ptr<ports::ArbWaveform> RecordingServer::Arb() {
    const auto arb = m_server->Arb();
    return arb ? std::make_shared<RecordingArb>(arb, m_sent) : nullptr;
}

}  // namespace krv::cli
