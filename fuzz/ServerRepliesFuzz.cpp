// The instrument server with a peer that answers anything. The first byte of an input chooses how
// the rest, all that the peer ever sends, is cut into pieces, and whether it identifies itself
// properly first.
#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "common/Error.h"
#include "fuzz/FuzzTarget.h"
#include "suite/scpi/ScpiInstrumentServer.h"
#include "suite/scpi/ScpiReply.h"
#include "tests/support/ScriptedTransport.h"

namespace krv::fuzz {
namespace {

// The peer's replies in pieces, of a line at most, or everything would look as if it came unasked.
std::deque<std::string> Pieces(const std::string& text, std::size_t pieceSize) {
    std::deque<std::string> pieces;
    for (std::size_t at = 0; at < text.size(); at += pieces.back().size()) {
        const std::size_t line = std::min(text.find('\n', at), text.size() - 1) + 1 - at;
        pieces.push_back(text.substr(at, std::min(pieceSize, line)));
    }
    return pieces;
}

bool IsPrintable(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

// Returns whether it went well, after a look at the session.
bool Try(suite::ScpiInstrumentServer& server, const tests::TransportScript& wire,
         const std::function<void()>& operation) {
    bool succeeded = true;
    try {
        operation();
    } catch (const Error& error) {
        succeeded = false;
        Require(!error.Description().empty() && IsPrintable(error.Description()),
                "a failure has a text that can be shown");
    }
    Require((wire.closed == 0) == succeeded, "a session that failed is closed");
    Require((server.Instrument()->IO() != nullptr) == succeeded, "and says so");
    return succeeded;
}

void CheckError(const ports::InstrumentError& error) {
    const auto again =
        suite::ParseError(std::to_string(error.number) + ',' + suite::Quoted(error.message));
    Require(again && again->number == error.number && again->message == error.message,
            "an error that was read can be formatted again");
}

// An instrument that has nothing of the name leaves the session open.
void ReadBack(suite::ScpiInstrumentServer& server) {
    try {
        static_cast<void>(server.Readback()->ReadBack("n"));
    } catch (const Error&) {
        if (server.Instrument()->IO() == nullptr) {
            throw;
        }
    }
}

void Converse(const std::shared_ptr<tests::TransportScript>& wire) {
    suite::TransportRegistry registry;
    registry.Add("fuzzed", [wire](const std::string&, const suite::TimeOuts&) {
        return std::make_unique<tests::ScriptedTransport>(wire);
    });
    suite::ScpiInstrumentServer server(registry);
    const std::array<std::int16_t, 3> codes{1, 2, 3};
    bool goesOn = Try(server, *wire, [&] { server.Connect("fuzzed://"); });
    const std::array<std::function<void()>, 6> operations{
        [&] { CheckError(server.Instrument()->ReadError()); },
        [&] { static_cast<void>(server.Arb()->SelectedArbFile()); },
        [&] { server.Arb()->DownloadIQ("n", codes, codes, 0); },
        [&] { server.Arb()->DownloadMarkers("n", codes, 0); },
        [&] { server.Instrument()->IO()->ReturnToLocal(); },
        [&] { ReadBack(server); }};
    for (std::size_t turn = 0; goesOn; ++turn) {
        goesOn = Try(server, *wire, operations[turn % operations.size()]);
    }
    const std::size_t sends = wire->sends.size();
    Try(server, *wire, [&] { static_cast<void>(server.Instrument()->ReadError()); });
    Try(server, *wire, [&] { server.Arb()->DownloadInterleaved("n", codes, 0); });
    Require(wire->sends.size() == sends, "nothing is sent on a session that failed");
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    std::string replies((data[0] & 0x80U) != 0 ? "Maker,M7718C,US1,B.03.40\nR2X\n" : "");
    replies.append(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto wire = std::make_shared<krv::tests::TransportScript>();
    wire->replies = krv::fuzz::Pieces(replies, 1 + (data[0] & 0x7FU));
    krv::fuzz::Converse(wire);
    return 0;
}
