// GeneratorConversation: a test that talks to a simulated generator, without a network between
// them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/commands/ScpiClient.h"
#include "suite/scpi/BlockHeader.h"

namespace krv::tests {

// A client of a generator.
class GeneratorClient {
 public:
    explicit GeneratorClient(std::shared_ptr<simulator::Generator> generator)
        : m_client(std::move(generator)) {}

    // All that is answered to the message, without the end of the last line.
    std::string Say(const std::string& message) {
        Send(message + '\n');
        std::string replies;
        while (const auto reply = m_client.TakeReply()) {
            replies += reply->text;
        }
        return replies.ends_with('\n') ? replies.substr(0, replies.size() - 1) : replies;
    }
    void Send(const std::string& text) { m_client.Feed(std::as_bytes(std::span(text))); }

 private:
    simulator::ScpiClient m_client;
};

class GeneratorConversation : public ::testing::Test {
 protected:
    GeneratorConversation() { SwitchOn({}); }

    void SwitchOn(const simulator::GeneratorSettings& settings) {
        generator = std::make_shared<simulator::Generator>(settings);
        client = std::make_unique<GeneratorClient>(generator);
    }
    std::string Say(const std::string& message) { return client->Say(message); }
    std::string Error() { return Say("SYST:ERR?"); }

    // Each line: what is said and what is answered.
    void Converse(const std::vector<std::pair<std::string, std::string>>& lines) {
        for (const auto& [said, answered] : lines) {
            EXPECT_EQ(Say(said), answered) << said;
        }
    }
    // Each line: what is said and the beginning of the error that the instrument notes, with
    // nothing answered.
    void Refuse(const std::vector<std::pair<std::string, std::string>>& lines) {
        for (const auto& [said, error] : lines) {
            EXPECT_EQ(Say(said), "") << said;
            EXPECT_EQ(Error().substr(0, error.size()), error) << said;
            EXPECT_EQ(Error(), "0,\"No error\"") << said;
        }
    }
    static std::string Block(std::string_view bytes) {
        return suite::BlockHeader(bytes.size()).append(bytes);
    }

    std::shared_ptr<simulator::Generator> generator;
    std::unique_ptr<GeneratorClient> client;
};

}  // namespace krv::tests
