// An instrument's computer that takes connection requests and never answers them, which a listener
// with a full queue is on these systems.
#include <gtest/gtest.h>

#include <chrono>
#include <list>
#include <string>

#include "common/Error.h"
#include "suite/transport/Asio.h"
#include "suite/transport/Transport.h"

namespace krv::tests {

using namespace suite;
namespace {

using asio::ip::tcp;
using std::chrono::milliseconds;

TEST(TcpTransport, GivesUpOnAComputerThatDoesNotAnswer) {
    asio::io_context context;
    tcp::acceptor acceptor(context, tcp::endpoint(asio::ip::address_v4::loopback(), 0));
    acceptor.listen(0);
    std::list<tcp::socket> waiting;
    bool accepted = true;
    while (accepted && waiting.size() < 50) {
        accepted = false;
        waiting.emplace_back(context).async_connect(
            acceptor.local_endpoint(), [&accepted](const std::error_code&) { accepted = true; });
        context.restart();
        context.run_for(milliseconds(200));
    }
    ASSERT_FALSE(accepted) << "the queue never fills";
    TransportRegistry registry;
    AddTcpTransport(registry);
    const std::string address =
        "tcp://127.0.0.1:" + std::to_string(acceptor.local_endpoint().port());
    const auto start = std::chrono::steady_clock::now();
    try {
        static_cast<void>(registry.Open(address, {milliseconds(300), milliseconds(300)}));
        FAIL() << "connected";
    } catch (const Error& error) {
        EXPECT_EQ(error.Description(),
                  "No connection to the instrument at " + address + ": no answer within 0.3 s.");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(5000));
    for (tcp::socket& socket : waiting) {
        std::error_code ignored;
        socket.close(ignored);
    }
    context.restart();
    context.run();
}

}  // namespace
}  // namespace krv::tests
