#include "suite/discovery/NetworkServices.h"

#include <algorithm>
#include <random>
#include <set>
#include <system_error>

#include "suite/transport/Asio.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

using asio::ip::udp;

// Anybody may answer, and each address is tried.
constexpr std::size_t MostAddresses = 64;
constexpr std::size_t LargestMessage = 9000;
constexpr std::size_t MostInterfaces = 16;

std::vector<DnsRecord> AllRecords(const DnsMessage& message) {
    std::vector<DnsRecord> records = message.answers;
    records.insert(records.end(), message.additional.begin(), message.additional.end());
    return records;
}

const DnsRecord* Find(const std::vector<DnsRecord>& records, const DnsName& name, DnsType type) {
    const auto found = std::ranges::find_if(records, [&](const DnsRecord& record) {
        return record.type == type && AreSameNames(record.name, name);
    });
    return found == records.end() ? nullptr : &*found;
}

std::string TextOf(const Ip4Address& address) {
    return asio::ip::make_address_v4(address).to_string();
}

// One question after the other into each network, and the answers as they come.
class MulticastSearch {
 public:
    explicit MulticastSearch(const AddressTaker& take) : m_socket(m_context), m_take(take) {
        std::random_device random;
        m_id = static_cast<std::uint16_t>(random());
        m_socket.open(udp::v4());
        m_socket.bind(udp::endpoint(udp::v4(), 0));
    }

    void Ask(const Ip4Address& network) {
        const std::string question = DnsMessageBytes(ServiceQuestion(m_id), 0);
        std::error_code ignored;
        m_socket.set_option(
            asio::ip::multicast::outbound_interface(asio::ip::make_address_v4(network)), ignored);
        m_socket.send_to(asio::buffer(question),
                         {asio::ip::make_address_v4(MulticastDnsGroup), MulticastDnsPort}, 0,
                         ignored);
    }
    void Listen(std::chrono::milliseconds patience) {
        Receive();
        m_context.run_for(patience);
        // What has come while this program had no turn.
        for (std::size_t count = 0; count < MostAddresses && m_context.poll_one() > 0; ++count) {
        }
    }

 private:
    void Receive() {
        m_socket.async_receive_from(asio::buffer(m_buffer), m_sender,
                                    [this](const std::error_code& failure, std::size_t size) {
                                        if (!failure) {
                                            TakeIn(std::as_bytes(std::span(m_buffer).first(size)));
                                        }
                                        if (m_found.size() < MostAddresses) {
                                            Receive();
                                        }
                                    });
    }
    void TakeIn(std::span<const std::byte> bytes) {
        const auto message = ReadDnsMessage(bytes);
        if (!message || !message->isResponse || message->id != m_id) {
            return;
        }
        const auto addresses = AddressesIn(*message, m_sender.address().to_v4().to_bytes());
        for (const std::string& address : addresses) {
            if (m_found.size() < MostAddresses && m_found.insert(address).second) {
                m_take(address);
            }
        }
    }

    asio::io_context m_context;
    udp::socket m_socket;
    std::uint16_t m_id = 0;
    std::array<char, LargestMessage> m_buffer{};
    udp::endpoint m_sender;
    const AddressTaker& m_take;
    std::set<std::string> m_found;
};

}  // namespace

DnsMessage ServiceQuestion(std::uint16_t id) {
    DnsMessage message{.id = id};
    for (const std::string_view service : {ScpiService, LxiService, Vxi11Service}) {
        message.questions.push_back({DnsNameOf(service), DnsType::Pointer, true});
    }
    return message;
}

std::vector<std::string> AddressesIn(const DnsMessage& response, const Ip4Address& sender) {
    const std::vector<DnsRecord> records = AllRecords(response);
    std::vector<std::string> addresses;
    for (const std::string_view service : {ScpiService, LxiService, Vxi11Service}) {
        for (const DnsRecord& pointer : records) {
            if (pointer.type != DnsType::Pointer ||
                !AreSameNames(pointer.name, DnsNameOf(service))) {
                continue;
            }
            const DnsRecord* const place = Find(records, pointer.target, DnsType::Service);
            const DnsRecord* const host =
                place == nullptr ? nullptr : Find(records, place->target, DnsType::Address);
            const bool hasPort = service == ScpiService && place != nullptr && place->port != 0;
            const std::string computer = TextOf(host == nullptr ? sender : host->address);
            const auto isOnThatComputer = [&](const std::string& address) {
                return address.starts_with("tcp://" + computer + ':');
            };
            if (hasPort || std::ranges::none_of(addresses, isOnThatComputer)) {
                addresses.push_back(TcpAddress{computer, hasPort ? place->port : UsualPort}.Text());
            }
        }
    }
    return addresses;
}

void FindNetworkAddresses(const AddressTaker& take, std::chrono::milliseconds patience,
                          const std::vector<Ip4Address>& interfaces) {
    try {
        MulticastSearch search(take);
        const std::size_t count = std::min(interfaces.size(), MostInterfaces);
        for (const Ip4Address& each : std::span(interfaces).first(count)) {
            search.Ask(each);
        }
        search.Listen(patience);
    } catch (const std::system_error&) {
        // Without a network there is nobody.
        return;
    }
}

}  // namespace krv::suite
