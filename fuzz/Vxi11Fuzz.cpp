// Remote procedure calls, as any client may send them to VXI-11 and to the port mapper. The first
// byte of an input says how the rest, a stream of records, is cut into pieces.
#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>

#include "fuzz/FuzzTarget.h"
#include "simulator/vxi11/PortMapper.h"
#include "simulator/vxi11/RecordReader.h"
#include "simulator/vxi11/Vxi11Conversation.h"

namespace krv::fuzz {
namespace {

using namespace simulator;

constexpr std::uint64_t MemoryPoints = 1024;

// A generator that one client talks to.
class Vxi11Bench {
 public:
    // All replies.
    std::string Take(std::span<const std::byte> stream, std::size_t pieceSize) {
        std::string replies;
        try {
            while (!stream.empty()) {
                const auto piece = stream.first(std::min(stream.size(), pieceSize));
                stream = stream.subspan(m_records.Feed(piece));
                if (m_records.IsComplete()) {
                    replies += AsRecord(Answer(m_records.Record()));
                    replies += AsRecord(Checked(AnswerCall(m_records.Record(), m_mapper)));
                }
            }
        } catch (const XdrFailure&) {
            replies += "the connection ends";
        }
        return replies;
    }
    void EndConversation() {
        m_conversation.reset();
        Require(
            m_generator->Memory().UsedPoints() + m_generator->Memory().FreePoints() == MemoryPoints,
            "what the client held is given back");
        for (std::size_t count = 0; count < Vxi11Links::Most; ++count) {
            const auto link = m_links->Open();
            Require(link && m_links->MayUse(*link), "no link is left over, and no lock");
        }
    }

 private:
    std::string Answer(std::span<const std::byte> record) {
        CallReply reply = m_conversation->Answer(record, std::chrono::milliseconds(0));
        if (reply.isWaiting) {
            reply = m_conversation->Answer(record, std::chrono::hours(1));
        }
        return Checked(reply);
    }
    static std::string Checked(const CallReply& reply) {
        Require(!reply.isWaiting, "every wait has an end");
        Require(reply.message.size() % 4 == 0, "a reply is whole");
        return reply.message;
    }

    std::shared_ptr<Generator> m_generator =
        std::make_shared<Generator>(GeneratorSettings{.memoryPoints = MemoryPoints});
    std::shared_ptr<Vxi11Links> m_links = std::make_shared<Vxi11Links>();
    std::unique_ptr<Vxi11Conversation> m_conversation =
        std::make_unique<Vxi11Conversation>(m_generator, m_links, 1024, "a client");
    std::array<RemoteProgram, 1> m_mapper{PortMapper(Vxi11Programs(1024))};
    RecordReader m_records{Vxi11Conversation::MostRecordBytes};
};

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto stream = std::as_bytes(std::span(data + 1, size - 1));
    krv::fuzz::Vxi11Bench whole;
    krv::fuzz::Vxi11Bench cut;
    krv::fuzz::Require(whole.Take(stream, SIZE_MAX) == cut.Take(stream, 1 + data[0]),
                       "any cut gives the same replies");
    whole.EndConversation();
    return 0;
}
