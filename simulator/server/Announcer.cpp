#include "simulator/server/Announcer.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "simulator/server/Serving.h"
#include "suite/discovery/NetworkServices.h"

namespace krv::simulator {
namespace {

using asio::ip::udp;
using suite::DnsRecord;

// Short, as for clients that keep nothing.
constexpr std::uint32_t SecondsToLive = 10;
constexpr std::size_t LargestQuestion = 1500;

udp::endpoint Group() {
    return {asio::ip::make_address_v4(suite::MulticastDnsGroup), suite::MulticastDnsPort};
}

void Join(udp::socket& socket) {
    const auto loopback = asio::ip::address_v4::loopback();
    try {
        socket.open(udp::v4());
        // Others on this computer answer at the port, too.
        socket.set_option(udp::socket::reuse_address(true));
        socket.bind({udp::v4(), suite::MulticastDnsPort});
        socket.set_option(asio::ip::multicast::join_group(Group().address().to_v4(), loopback));
        socket.set_option(asio::ip::multicast::outbound_interface(loopback));
    } catch (const std::system_error& failure) {
        throw Error(ErrorNumber::Unspecified,
                    "The generator cannot be announced: " + failure.code().message() + ".");
    }
}

// Where the answer goes: to the one who has asked, or to all where the question was for all.
udp::endpoint AnswerAddress(const suite::DnsMessage& question, const udp::endpoint& sender) {
    const bool wantsUnicast =
        std::ranges::any_of(question.questions, &suite::DnsQuestion::wantsUnicast);
    return wantsUnicast || sender.port() != suite::MulticastDnsPort ? sender : Group();
}

asio::awaitable<void> AnswerQuestions(udp::socket& socket, std::vector<DnsRecord> records) {
    std::array<std::byte, LargestQuestion> buffer{};
    while (true) {
        udp::endpoint sender;
        std::error_code failure;
        const std::size_t received = co_await socket.async_receive_from(
            asio::buffer(buffer), sender, asio::redirect_error(asio::use_awaitable, failure));
        if (failure) {
            co_await Wait(PollInterval);
            continue;
        }
        const auto question = suite::ReadDnsMessage(std::span(buffer).first(received));
        if (!question || !sender.address().is_loopback()) {
            continue;
        }
        const bool isFromOtherPort = sender.port() != suite::MulticastDnsPort;
        if (const auto answer = suite::AnswerTo(*question, records, isFromOtherPort)) {
            const std::string bytes = suite::DnsMessageBytes(*answer, SecondsToLive);
            const udp::endpoint to = AnswerAddress(*question, sender);
            co_await socket.async_send_to(asio::buffer(bytes), to,
                                          asio::redirect_error(asio::use_awaitable, failure));
        }
    }
}

}  // namespace

Announcer::Announcer(asio::io_context& context, const suite::ServedInstrument& instrument)
    : m_socket(asio::make_strand(context)) {
    Join(m_socket);
    asio::co_spawn(m_socket.get_executor(),
                   AnswerQuestions(m_socket, suite::ServiceRecords(instrument)), asio::detached);
}

}  // namespace krv::simulator
