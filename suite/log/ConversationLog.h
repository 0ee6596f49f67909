// ConversationLog: a file of what was sent and received on connections, for finding faults.
//
//     0.000 1 ! connected to tcp://127.0.0.1:5025
//     0.001 1 > *IDN?
//     0.002 1 < Corvane,M7718C,US00000001,B.03.40
//
// A line has the seconds since the log was begun, the conversation's number, what it is (sent,
// received or a remark) and the text as WireText shows it. It is written at once, so that a
// conversation can be watched.
//
// A log takes the place of an earlier one, and of no other file.
//
// A log is shared by the conversations in it; each may be on a thread of its own. A line that can't
// be written is lost and remembered, since no conversation should end for it.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "common/WholeFile.h"
#include "suite/log/WireText.h"
#include "suite/transport/Transport.h"

namespace krv::suite {

enum class Saying : char { Sent = '>', Received = '<', Remark = '!' };

class ConversationLog {
 public:
    // Replaces an earlier log; a device or pipe is written to. Throws Error with the reason for
    // what can't be written, for a file that is no log, and for what is no regular file.
    explicit ConversationLog(const std::filesystem::path& file);

    [[nodiscard]] int BeginConversation();
    void Write(int conversation, Saying saying, std::string_view text);
    // True when every line so far is in the file.
    [[nodiscard]] bool IsComplete() const;

 private:
    mutable std::mutex m_mutex;
    FileHandle m_file;
    bool m_isComplete = true;
    int m_conversations = 0;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

// One conversation in a log, or in none. One thread.
class LoggedConversation {
 public:
    // The remark opens the conversation; without a log (null) nothing is written.
    LoggedConversation(std::shared_ptr<ConversationLog> log, std::string_view opening);
    // Writes the beginnings of lines whose ends never came, and that the conversation is closed.
    ~LoggedConversation();
    LoggedConversation(const LoggedConversation&) = delete;
    LoggedConversation& operator=(const LoggedConversation&) = delete;

    void Sent(std::span<const std::byte> bytes) { Note(Saying::Sent, m_sent, bytes); }
    void Received(std::span<const std::byte> bytes) { Note(Saying::Received, m_received, bytes); }
    // Ends the line that was sent last: no more of it will come.
    void EndSent() { NoteRest(Saying::Sent, m_sent); }
    // Ends the line that was received last by other means than a line feed.
    void EndReceived() { NoteRest(Saying::Received, m_received, ""); }
    void Remark(std::string_view text);

 private:
    void Note(Saying saying, WireText& text, std::span<const std::byte> bytes);
    void NoteRest(Saying saying, WireText& text, std::string_view remark = " (without an end)");

    std::shared_ptr<ConversationLog> m_log;
    int m_number = 0;
    WireText m_sent;
    WireText m_received;
};

// Writes every connection that the registry opens, or fails to open, to the log.
void LogConversations(TransportRegistry& registry, std::shared_ptr<ConversationLog> log);

}  // namespace krv::suite
