// BenchVisa: what the VISA library for tests is made of: sessions to the generator that listens at
// the port KRV_BENCH_VISA_PORT of this computer, as instruments at GPIB, USB and the like appear.
// KRV_BENCH_VISA_FAULTS switches faults on, separated by blanks; KRV_BENCH_VISA_TRACE names a file
// that each call that an instrument notices is written down in.
//
//     partial-write    each transfer takes half of its bytes
//     slow-write       each transfer runs into its time-out when it has taken half
//     stuck-write      no transfer takes anything, for a minute at most
//     odd-end          each transfer brings a few bytes, and in a block says that the message ends
//     late-end         the end of a message comes alone, behind its last byte
//     no-line-end      replies end without a line end
//     locked, absent, forbidden, hang      opening fails, or takes a minute
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "suite/transport/Asio.h"

namespace krv::tests {

[[nodiscard]] bool HasFault(const char* name);
void Trace(const std::string& event);

// One instrument as it is reached through one interface.
class BenchSession {
 public:
    enum class Kind : std::uint8_t { Gpib = 1, Serial = 4, Lan = 6, Usb = 7, Socket = 8 };
    enum class Outcome : std::uint8_t { End, LineEnd, More, TimeOut, Lost };

    explicit BenchSession(const std::string& name);

    std::uint32_t timeOutMs = 2000;
    bool assertsEnd = true;
    bool stopsAtLineEnd = false;
    std::uint32_t baudRate = 9600;

    [[nodiscard]] Kind LinkKind() const { return m_kind; }
    // A socket counts as the network.
    [[nodiscard]] bool IsStream() const { return m_kind == Kind::Serial || m_kind == Kind::Socket; }
    [[nodiscard]] Outcome Write(const std::string& bytes, std::uint32_t& done);
    // At most so many bytes.
    [[nodiscard]] Outcome Read(std::size_t most, std::string& bytes);
    // 4: an error waits; 16: a reply waits.
    [[nodiscard]] unsigned StatusByte();
    void Clear();

 private:
    // Takes what comes until then or until there is a whole reply.
    void Collect(std::chrono::milliseconds time);
    [[nodiscard]] std::size_t ReplyLength() const;

    Kind m_kind;
    asio::io_context m_context;
    asio::ip::tcp::socket m_socket{m_context};
    // Beside the conversation.
    asio::ip::tcp::socket m_statusSocket{m_context};
    // Of a message whose end hasn't come.
    std::string m_message;
    std::string m_replies;
    // Of the reply that is being read.
    std::size_t m_left = 0;
    bool m_isBlock = false;
    bool m_hasLateEnd = false;
};

}  // namespace krv::tests
