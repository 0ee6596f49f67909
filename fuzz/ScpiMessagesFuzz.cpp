// Program messages and blocks, as any client may send them to the generator. The
// first byte of an input chooses what the rest is: a stream of messages, or the bytes of a block,
// and how it is cut into pieces.
#include <algorithm>
#include <memory>
#include <string>

#include "common/Crc32.h"
#include "common/Hexadecimal.h"
#include "fuzz/FuzzTarget.h"
#include "simulator/commands/ScpiClient.h"
#include "simulator/scpi/AsciiCase.h"
#include "suite/log/WireText.h"
#include "suite/scpi/BlockHeader.h"

namespace krv::fuzz {
namespace {

using simulator::Generator;
using simulator::ScpiClient;

// Small, so that it is often full.
constexpr std::uint64_t MemoryPoints = 1024;

std::span<const std::byte> BytesOf(const std::string& text) {
    return std::as_bytes(std::span(text));
}

// A generator with one client, and all that is answered.
class Bench {
 public:
    std::string Say(const std::string& stream, std::size_t pieceSize = SIZE_MAX) {
        // A fault may have spoilt any reply.
        m_repliesAreWhole =
            m_repliesAreWhole && simulator::AsciiUpper(stream).find("FAUL") == stream.npos;
        std::string replies;
        for (auto bytes = BytesOf(stream); !bytes.empty();) {
            const auto piece = bytes.first(std::min(bytes.size(), pieceSize));
            m_client->Feed(piece);
            while (const auto reply = m_client->TakeReply()) {
                CheckReply(reply->text);
                replies += reply->text;
            }
            bytes = bytes.subspan(piece.size());
        }
        return replies;
    }
    // The client goes, maybe in the middle of a block, and another comes.
    void ChangeClient() { m_client = std::make_unique<ScpiClient>(m_generator); }
    [[nodiscard]] Generator& Device() { return *m_generator; }

 private:
    void CheckReply(const std::string& reply) const {
        if (!m_repliesAreWhole) {
            return;
        }
        int lines = 0;
        suite::WireText text;
        text.Feed(BytesOf(reply), [&lines](std::string_view) { ++lines; });
        Require(lines == 1 && text.TakeRest().empty(), "a reply is one line");
    }

    std::shared_ptr<Generator> m_generator =
        std::make_shared<Generator>(simulator::GeneratorSettings{.memoryPoints = MemoryPoints});
    std::unique_ptr<ScpiClient> m_client = std::make_unique<ScpiClient>(m_generator);
    bool m_repliesAreWhole = true;
};

// What a new client finds after the one before.
std::string StateAfter(Bench& bench) {
    bench.ChangeClient();
    Generator& device = bench.Device();
    device.ActiveFaults().Clear();
    Require(device.Errors().Count() <= simulator::ErrorQueue::Capacity,
            "the error queue has an end");
    Require(device.Memory().UsedPoints() + device.Memory().FreePoints() == MemoryPoints,
            "what a client held is given back");
    std::string state = bench.Say("ARB:CAT?;SEL?;STAT?;:SYST:ERR:COUN?;ALL?\n");
    Require(bench.Say("*CLS;*IDN?;:SYST:ERR?\n") ==
                "Corvane,M7718C,US00000001,B.03.40;0,\"No error\"\n",
            "the instrument goes on working");
    return state;
}

void ListenToMessages(const std::string& stream, std::size_t pieceSize) {
    Bench whole;
    Bench cut;
    Require(whole.Say(stream) == cut.Say(stream, pieceSize), "any cut gives the same replies");
    Require(StateAfter(whole) == StateAfter(cut), "any cut leaves the same state");
}

void TakeInBlock(const std::string& bytes, std::size_t pieceSize) {
    Bench bench;
    const std::string block = suite::BlockHeader(bytes.size()) + bytes;
    Require(bench.Say("BAD " + block + ";*OPC?\n*OPC?\n", pieceSize) == "1\n" &&
                bench.Say("SYST:ERR?;ERR?\n").find("-113,\"Undefined header;BAD\";0,") == 0,
            "the block of an unknown command is read over");
    const std::string reply =
        bench.Say("ARB:DATA:IQ a," + block + ',' + block + ";*OPC?\nSYST:ERR?\n", pieceSize);
    const char* const error = bytes.size() % 2 != 0             ? "1\n-161,"
                              : bytes.size() / 2 > MemoryPoints ? "1\n-225,"
                                                                : "1\n0,";
    Require(reply.find(error) == 0, "a block ends where it was declared to");
    if (*(error + 2) == '0') {
        std::string littleEndian = bytes;
        for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
            std::swap(littleEndian[at], littleEndian[at + 1]);
        }
        Crc32 sum;
        sum.Add(BytesOf(littleEndian));
        const std::string expected = "#H" + Hexadecimal(sum.Value());
        Require(bench.Say("ARB:CHEC? a\n") == expected + ',' + expected + ",#H00000000\n",
                "every byte of a block is kept");
    }
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t pieceSize = 1 + (data[0] & 0x7FU);
    if ((data[0] & 0x80U) == 0) {
        krv::fuzz::ListenToMessages(rest, pieceSize);
    } else {
        krv::fuzz::TakeInBlock(rest, pieceSize);
    }
    return 0;
}
