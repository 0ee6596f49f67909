#include "suite/log/ConversationLog.h"

#include <array>
#include <cstdio>
#include <exception>
#include <utility>

#include "common/Error.h"

namespace krv::suite {
namespace {

class LoggedTransport final : public Transport {
 public:
    LoggedTransport(std::unique_ptr<Transport> transport, std::shared_ptr<ConversationLog> log,
                    const std::string& address)
        : m_conversation(std::move(log), "connected to " + address),
          m_transport(std::move(transport)) {}

    void Send(std::span<const std::byte> bytes) override {
        Remarking([&] {
            m_transport->Send(bytes);
            m_conversation.Sent(bytes);
        });
    }
    std::size_t Receive(std::span<std::byte> bytes) override {
        std::size_t count = 0;
        Remarking([&] { count = m_transport->Receive(bytes); });
        m_conversation.Received(bytes.first(count));
        return count;
    }
    void SetTimeOuts(const TimeOuts& timeOuts) override { m_transport->SetTimeOuts(timeOuts); }
    [[nodiscard]] std::string Kind() const override { return m_transport->Kind(); }
    ports::SerialSession* Serial() override { return m_transport->Serial(); }

 private:
    template <class Work>
    void Remarking(Work work) {
        try {
            work();
        } catch (const std::exception& failure) {
            m_conversation.Remark(failure.what());
            throw;
        }
    }

    LoggedConversation m_conversation;
    std::unique_ptr<Transport> m_transport;
};

}  // namespace

ConversationLog::ConversationLog(const std::filesystem::path& file)
    : m_file(file, std::ios::binary | std::ios::trunc) {
    if (!m_file) {
        const auto name = file.u8string();
        throw Error(ErrorNumber::PathFileAccess,
                    "Can't write " + std::string(name.begin(), name.end()) + '.');
    }
}

int ConversationLog::BeginConversation() {
    const std::lock_guard lock(m_mutex);
    return ++m_conversations;
}

void ConversationLog::Write(int conversation, Saying saying, std::string_view text) {
    const std::lock_guard lock(m_mutex);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    std::array<char, 64> start{};
    std::snprintf(start.data(), start.size(), "%.3f %d %c ", elapsed.count(), conversation,
                  static_cast<char>(saying));
    m_file << start.data() << text << '\n' << std::flush;
}

bool ConversationLog::IsComplete() const {
    const std::lock_guard lock(m_mutex);
    return m_file.good();
}

LoggedConversation::LoggedConversation(std::shared_ptr<ConversationLog> log,
                                       std::string_view opening)
    : m_log(std::move(log)) {
    if (m_log != nullptr) {
        m_number = m_log->BeginConversation();
        Remark(opening);
    }
}

LoggedConversation::~LoggedConversation() {
    NoteRest(Saying::Received, m_received);
    NoteRest(Saying::Sent, m_sent);
    Remark("closed");
}

void LoggedConversation::Remark(std::string_view text) {
    if (m_log != nullptr) {
        m_log->Write(m_number, Saying::Remark, text);
    }
}

void LoggedConversation::Note(Saying saying, WireText& text, std::span<const std::byte> bytes) {
    if (m_log != nullptr) {
        text.Feed(bytes, [&](std::string_view line) { m_log->Write(m_number, saying, line); });
    }
}

void LoggedConversation::NoteRest(Saying saying, WireText& text) {
    if (const std::string rest = text.TakeRest(); !rest.empty()) {
        m_log->Write(m_number, saying, rest + " (without an end)");
    }
}

void LogConversations(TransportRegistry& registry, std::shared_ptr<ConversationLog> log) {
    registry.InterceptOpening(
        [log](const std::string& address,
              const TransportRegistry::OpenCall& open) -> std::unique_ptr<Transport> {
            try {
                return std::make_unique<LoggedTransport>(open(), log, address);
            } catch (const Error& failure) {
                log->Write(log->BeginConversation(), Saying::Remark, failure.Description());
                throw;
            }
        });
}

}  // namespace krv::suite
