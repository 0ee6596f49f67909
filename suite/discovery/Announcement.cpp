#include "suite/discovery/Announcement.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

#include "suite/transport/Asio.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

using asio::ip::tcp;

constexpr std::string_view SignStart = "krv-sim-";
constexpr const char* ThisComputer = "127.0.0.1";

std::optional<std::uint16_t> PortOf(const std::filesystem::path& sign) {
    const std::u8string name = sign.filename().u8string();
    const std::string text(name.begin(), name.end());
    if (!text.starts_with(SignStart)) {
        return std::nullopt;
    }
    std::uint16_t port = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data() + SignStart.size(), end, port);
    return failure == std::errc() && stop == end && port != 0 ? std::optional(port) : std::nullopt;
}

bool AcceptsConnections(std::uint16_t port) {
    asio::io_context context;
    tcp::socket socket(context);
    std::error_code failure;
    socket.connect(tcp::endpoint(asio::ip::address_v4::loopback(), port), failure);
    return failure != asio::error::connection_refused;
}

}  // namespace

std::filesystem::path Announcement::DefaultFolder() noexcept {
    std::error_code failure;
    return std::filesystem::temp_directory_path(failure);
}

Announcement::Announcement(std::uint16_t port, const std::filesystem::path& folder) noexcept {
    try {
        m_sign = folder / (std::string(SignStart) + std::to_string(port));
        std::error_code ignored;
        std::filesystem::create_directory(m_sign, ignored);
    } catch (const std::exception&) {
        // Out of memory: there is no sign.
        m_sign.clear();
    }
}

Announcement::~Announcement() {
    std::error_code ignored;
    std::filesystem::remove(m_sign, ignored);
}

std::vector<std::string> AnnouncedAddresses(const std::filesystem::path& folder) {
    std::vector<std::uint16_t> ports;
    std::error_code failure;
    std::filesystem::directory_iterator signs(folder, failure);
    for (; !failure && signs != std::filesystem::directory_iterator(); signs.increment(failure)) {
        const auto port = PortOf(signs->path());
        if (!port) {
            continue;
        }
        if (AcceptsConnections(*port)) {
            ports.push_back(*port);
        } else {
            std::error_code ignored;
            std::filesystem::remove(signs->path(), ignored);
        }
    }
    std::sort(ports.begin(), ports.end());
    std::vector<std::string> addresses;
    for (const std::uint16_t port : ports) {
        addresses.push_back(TcpAddress{ThisComputer, port}.Text());
    }
    return addresses;
}

}  // namespace krv::suite
