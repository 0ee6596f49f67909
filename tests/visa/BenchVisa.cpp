#include "tests/visa/BenchVisa.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <thread>

#include <asio/read_until.hpp>

namespace krv::tests {
namespace {

using std::chrono::milliseconds;

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

BenchSession::Kind KindOf(const std::string& name) {
    using Kind = BenchSession::Kind;
    return name.starts_with("GPIB")   ? Kind::Gpib
           : name.starts_with("USB")  ? Kind::Usb
           : name.starts_with("ASRL") ? Kind::Serial
           : name.ends_with("SOCKET") ? Kind::Socket
                                      : Kind::Lan;
}

asio::ip::tcp::endpoint Generator() {
    const auto port = std::strtoul(Variable("KRV_BENCH_VISA_PORT").c_str(), nullptr, 10);
    return {asio::ip::address_v4::loopback(), static_cast<asio::ip::port_type>(port)};
}

}  // namespace

bool HasFault(const char* name) {
    std::istringstream faults(Variable("KRV_BENCH_VISA_FAULTS"));
    for (std::string fault; faults >> fault;) {
        if (fault == name) {
            return true;
        }
    }
    return false;
}

void Trace(const std::string& event) {
    if (const std::string file = Variable("KRV_BENCH_VISA_TRACE"); !file.empty()) {
        std::ofstream(file, std::ios::app | std::ios::binary) << event << '\n';
    }
}

BenchSession::BenchSession(const std::string& name) : m_kind(KindOf(name)) {
    m_socket.connect(Generator());
    m_socket.non_blocking(true);
    m_statusSocket.connect(Generator());
}

BenchSession::Outcome BenchSession::Write(const std::string& bytes, std::uint32_t& done) {
    done = 0;
    if (HasFault("stuck-write")) {
        std::this_thread::sleep_for(milliseconds(std::min(timeOutMs, 60000U)));
        return Outcome::TimeOut;
    }
    const bool isHalf = (HasFault("partial-write") || HasFault("slow-write")) && bytes.size() > 1;
    const std::string taken = bytes.substr(0, isHalf ? bytes.size() / 2 : bytes.size());
    const bool isEnd = !IsStream() && assertsEnd && !isHalf;
    // An interface with ends discards the reply that nobody wanted.
    if (!IsStream() && m_message.empty()) {
        Collect(milliseconds(0));
        m_replies.clear();
        m_left = 0;
    }
    m_message += taken;
    if (isEnd) {
        Trace("end behind " + std::to_string(m_message.size()) + " bytes, the last is " +
              std::to_string(m_message.empty() ? -1 : m_message.back()));
    }
    if (isEnd || IsStream()) {
        m_socket.non_blocking(false);
        asio::write(m_socket, asio::buffer(m_message));
        m_socket.non_blocking(true);
        m_message.clear();
    }
    done = static_cast<std::uint32_t>(taken.size());
    return isHalf && HasFault("slow-write") ? Outcome::TimeOut : Outcome::End;
}

void BenchSession::Collect(milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    do {
        std::array<char, 65536> bytes;
        std::error_code code;
        const std::size_t count = m_socket.read_some(asio::buffer(bytes), code);
        m_replies.append(bytes.data(), count);
        if (count == 0 && ReplyLength() == 0 && time.count() > 0) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    } while (ReplyLength() == 0 && std::chrono::steady_clock::now() < end);
}

// Of the first one that is whole, with its line end; 0 for none. A block may hold line ends.
std::size_t BenchSession::ReplyLength() const {
    std::size_t from = 0;
    if (m_replies.size() > 2 && m_replies[0] == '#') {
        const auto digits = static_cast<std::size_t>(m_replies[1] - '0');
        from = 2 + digits + std::strtoul(m_replies.substr(2, digits).c_str(), nullptr, 10);
    }
    const std::size_t end =
        from < m_replies.size() ? m_replies.find('\n', from) : std::string::npos;
    return end == std::string::npos ? 0 : end + 1;
}

BenchSession::Outcome BenchSession::Read(std::size_t most, std::string& bytes) {
    if (m_hasLateEnd) {
        m_hasLateEnd = false;
        return Outcome::End;
    }
    if (m_left == 0) {
        Collect(milliseconds(timeOutMs));
        m_left = ReplyLength();
        m_isBlock = m_replies.starts_with('#');
    }
    if (m_left == 0) {
        return Outcome::TimeOut;
    }
    const bool isWithoutLineEnd = HasFault("no-line-end") && !IsStream();
    std::size_t count = std::min(most, m_left);
    if (stopsAtLineEnd) {
        count = std::min(count, m_replies.find('\n') + 1);
    }
    if (HasFault("odd-end")) {
        count = std::min<std::size_t>(count, 7);
    }
    m_left -= count;
    const bool isLast = m_left == 0;
    bytes = m_replies.substr(0, isLast && isWithoutLineEnd ? count - 1 : count);
    m_replies.erase(0, count);
    if (IsStream()) {
        return bytes.ends_with('\n') && stopsAtLineEnd ? Outcome::LineEnd : Outcome::More;
    }
    m_hasLateEnd = isLast && HasFault("late-end");
    const bool isOdd = m_isBlock && HasFault("odd-end");
    return (isLast && !m_hasLateEnd) || isOdd ? Outcome::End : Outcome::More;
}

unsigned BenchSession::StatusByte() {
    Collect(milliseconds(0));
    if (ReplyLength() != 0) {
        return 16;
    }
    std::string reply;
    asio::write(m_statusSocket, asio::buffer(std::string("*STB?\n")));
    asio::read_until(m_statusSocket, asio::dynamic_buffer(reply), '\n');
    return static_cast<unsigned>(std::stoul(reply)) & 4U;
}

// The generator forgets a half message with its connection.
void BenchSession::Clear() {
    m_socket.close();
    m_socket = asio::ip::tcp::socket(m_context);
    m_message.clear();
    m_replies.clear();
    m_left = 0;
    m_socket.connect(Generator());
    m_socket.non_blocking(true);
}

}  // namespace krv::tests
