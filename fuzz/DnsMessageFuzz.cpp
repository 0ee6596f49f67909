// Messages of multicast DNS, as anybody in the network may send them.
#include <array>

#include "fuzz/FuzzTarget.h"
#include "suite/discovery/NetworkServices.h"
#include "suite/discovery/ServiceAnswers.h"

namespace krv::fuzz {
namespace {

using namespace suite;

void TakeIn(const DnsMessage& message) {
    Require(AddressesIn(message, {10, 0, 0, 1}).size() <=
                message.answers.size() + message.additional.size(),
            "no record makes several addresses");
    const auto own =
        ServiceRecords({"Maker", "M1", "7", "B", {10, 0, 0, 7}, {{ScpiService, 5025}}});
    if (const auto answer = AnswerTo(message, own, true)) {
        Require(answer->answers.size() + answer->additional.size() == own.size(),
                "an answer has the instrument's own records");
    }
    const std::string written = DnsMessageBytes(message, 10);
    const auto again = ReadDnsMessage(std::as_bytes(std::span(written)));
    Require(again && DnsMessageBytes(*again, 10) == written,
            "what was read can be written and read");
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto message = krv::suite::ReadDnsMessage(std::as_bytes(std::span(data, size)))) {
        krv::fuzz::TakeIn(*message);
    }
    return 0;
}
