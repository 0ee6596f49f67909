#include "suite/log/ConversationLog.h"

#include <array>
#include <cstdio>
#include <exception>
#include <fstream>
#include <system_error>
#include <utility>

#include "common/Error.h"
#include "suite/transport/ForwardingTransport.h"

namespace krv::suite {
namespace {

class LoggedTransport final : public ForwardingTransport {
 public:
    LoggedTransport(std::unique_ptr<Transport> transport, std::shared_ptr<ConversationLog> log,
                    const std::string& address)
        : ForwardingTransport(std::move(transport)),
          m_conversation(std::move(log), "connected to " + address) {}

    void Send(std::span<const std::byte> bytes, MessagePart part) override {
        Remarking([&] {
            ForwardingTransport::Send(bytes, part);
            m_conversation.Sent(bytes);
        });
    }
    std::size_t Receive(std::span<std::byte> bytes) override {
        std::size_t count = 0;
        Remarking([&] { count = ForwardingTransport::Receive(bytes); });
        m_conversation.Received(bytes.first(count));
        return count;
    }

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
};

// A log begins with "SECONDS NUMBER !"; one that was never written to is empty.
bool HoldsLog(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, 64> beginning{};
    file.read(beginning.data(), beginning.size() - 1);
    char saying = '\0';
    return (file.gcount() == 0 && file.eof()) ||
           (std::sscanf(beginning.data(), "%*[0-9.] %*d %c", &saying) == 1 &&
            saying == static_cast<char>(Saying::Remark));
}

[[noreturn]] void Refuse(const std::filesystem::path& path, const std::string& reason) {
    const auto name = path.u8string();
    throw Error(ErrorNumber::PathFileAccess,
                "Can't write " + std::string(name.begin(), name.end()) + ": " + reason);
}

FileHandle OpenLog(const std::filesystem::path& path) {
    std::error_code failure;
    if (!IsDeviceOrPipe(path)) {
        failure = WhyNotReplaceable(path);
        if (!failure && std::filesystem::exists(path) && !HoldsLog(path)) {
            Refuse(path, "The file holds something else than a transcript.");
        }
        failure = failure ? failure : RemoveRegularFile(path);
    }
    FileHandle file(nullptr, &std::fclose);
    if (!failure) {
        file = OpenToWrite(path, failure);
    }
    if (failure) {
        Refuse(path, failure.message());
    }
    return file;
}

}  // namespace

ConversationLog::ConversationLog(const std::filesystem::path& file) : m_file(OpenLog(file)) {}

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
    const std::string line = start.data() + std::string(text) + '\n';
    m_isComplete &= std::fwrite(line.data(), 1, line.size(), m_file.get()) == line.size() &&
                    std::fflush(m_file.get()) == 0;
}

bool ConversationLog::IsComplete() const {
    const std::lock_guard lock(m_mutex);
    return m_isComplete;
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

void LoggedConversation::NoteRest(Saying saying, WireText& text, std::string_view remark) {
    if (const std::string rest = text.TakeRest(); !rest.empty()) {
        m_log->Write(m_number, saying, rest + std::string(remark));
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
