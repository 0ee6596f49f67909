// ScriptedTransport: an instrument that says what a test wrote down, whatever it is asked.
#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <utility>

#include "common/Error.h"
#include "suite/transport/Transport.h"

namespace krv::tests {

// Shared with the test, since a connection that fails destroys its transport.
struct TransportScript {
    // What each Receive gives, at most; when none is left the instrument stays silent.
    std::deque<std::string> replies;
    std::string sent;
    // How many bytes each Send carried.
    std::deque<std::size_t> sends;
    // How many bytes had been sent at the end of each message.
    std::deque<std::size_t> messageEnds;
    // The interface tells the ends of replies, which have no other.
    bool hasEnds = false;
    // The connection ends once so many bytes have been sent.
    std::size_t endAfter = SIZE_MAX;
    int closed = 0;
};

class ScriptedTransport final : public suite::Transport {
 public:
    explicit ScriptedTransport(std::shared_ptr<TransportScript> script)
        : m_script(std::move(script)) {}
    ~ScriptedTransport() override { ++m_script->closed; }
    ScriptedTransport(const ScriptedTransport&) = delete;
    ScriptedTransport& operator=(const ScriptedTransport&) = delete;

    void Send(std::span<const std::byte> bytes, suite::MessagePart part) override {
        m_script->sends.push_back(bytes.size());
        m_script->sent.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        if (part == suite::MessagePart::Last) {
            m_script->messageEnds.push_back(m_script->sent.size());
        }
        if (m_script->sent.size() > m_script->endAfter) {
            throw Error(ErrorNumber::Unspecified, "The cable is out.");
        }
    }
    std::size_t Receive(std::span<std::byte> bytes) override {
        if (m_script->replies.empty()) {
            throw Error(ErrorNumber::Unspecified, "Nothing was heard.");
        }
        const std::string reply = std::move(m_script->replies.front());
        m_script->replies.pop_front();
        const std::size_t count = std::min(bytes.size(), reply.size());
        std::memcpy(bytes.data(), reply.data(), count);
        return count;
    }
    [[nodiscard]] bool HasReceivedEnd() const override { return m_script->hasEnds; }
    [[nodiscard]] std::string Kind() const override { return "Scripted"; }

 private:
    std::shared_ptr<TransportScript> m_script;
};

}  // namespace krv::tests
