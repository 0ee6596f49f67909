#include "suite/discovery/Announcement.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <random>
#include <string_view>
#include <system_error>
#include <vector>

#include "common/ErrorTrap.h"
#include "common/Hexadecimal.h"
#include "common/NewFile.h"
#include "suite/transport/Asio.h"
#include "suite/transport/TcpAddress.h"

namespace krv::suite {
namespace {

using asio::ip::tcp;

constexpr std::string_view SignStart = "krv-sim-";
constexpr const char* ThisComputer = "127.0.0.1";
// Anybody may put signs there, and a connection takes time.
constexpr std::size_t MostSigns = 32;

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

struct Sign {
    std::filesystem::path path;
    std::uint16_t port = 0;
    // Nothing listens at the port.
    bool isRefused = false;
};

// Some of the signs in the folder.
std::vector<Sign> SignsIn(const std::filesystem::path& folder) {
    std::vector<Sign> found;
    std::error_code failure;
    std::filesystem::directory_iterator entries(folder, failure);
    for (; !failure && entries != std::filesystem::directory_iterator() && found.size() < MostSigns;
         entries.increment(failure)) {
        if (const auto port = PortOf(entries->path())) {
            found.push_back({entries->path(), *port});
        }
    }
    return found;
}

// To all at once. Some systems take two seconds to say that nobody listens.
void TryToConnect(std::vector<Sign>& signs, const AddressTaker& take) {
    constexpr std::chrono::seconds Patience{3};
    asio::io_context context;
    std::vector<tcp::socket> sockets;
    for (Sign& sign : signs) {
        sockets.emplace_back(context).async_connect(
            tcp::endpoint(asio::ip::address_v4::loopback(), sign.port),
            [&sign, &take](const std::error_code& failure) {
                sign.isRefused = failure == asio::error::connection_refused;
                if (!failure) {
                    take(TcpAddress{ThisComputer, sign.port}.Text());
                }
            });
    }
    context.run_for(Patience);
    // What has come while this program had no turn.
    context.poll();
}

std::string StartOfContent(std::uint16_t port) {
    return "A simulated signal generator listens at port " + std::to_string(port) + ": ";
}

// No two signs have the same.
std::string NewContent(std::uint16_t port) {
    std::random_device random;
    return StartOfContent(port) + Hexadecimal(random()) + Hexadecimal(random()) + '\n';
}

// Nothing where there is no plain file. No sign is longer than what is read.
std::string ContentOf(const std::filesystem::path& sign) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(std::filesystem::symlink_status(sign, ignored))) {
        return {};
    }
    std::array<char, 128> content{};
    std::ifstream file(sign, std::ios::binary);
    file.read(content.data(), content.size());
    return {content.data(), static_cast<std::size_t>(file.gcount())};
}

void TakeAway(const std::filesystem::path& sign) {
    std::error_code ignored;
    std::filesystem::remove(sign, ignored);
}

// For signs of instruments that aren't there any more.
void TakeAwayOldSign(const std::filesystem::path& sign, std::uint16_t port) {
    const std::string content = ContentOf(sign);
    if (content.starts_with(StartOfContent(port)) && content.size() == NewContent(port).size()) {
        TakeAway(sign);
    }
}

bool MakeSign(const std::filesystem::path& sign, const std::string& content) {
    std::FILE* const file = OpenNewFile(sign);
    if (file == nullptr) {
        return false;
    }
    const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
    if (std::fclose(file) == 0 && written) {
        return true;
    }
    TakeAway(sign);
    return false;
}

}  // namespace

std::filesystem::path Announcement::DefaultFolder() noexcept {
    std::error_code failure;
    return std::filesystem::temp_directory_path(failure);
}

Announcement::Announcement(std::uint16_t port, const std::filesystem::path& folder) noexcept {
    try {
        const std::filesystem::path sign = folder / (std::string(SignStart) + std::to_string(port));
        TakeAwayOldSign(sign, port);
        m_content = NewContent(port);
        if (MakeSign(sign, m_content)) {
            m_sign = sign;
        }
    } catch (const std::exception&) {
        // Out of memory: there is no sign.
        m_sign.clear();
    }
}

Announcement::~Announcement() {
    TrapErrors([this] {
        if (!m_sign.empty() && ContentOf(m_sign) == m_content) {
            TakeAway(m_sign);
        }
    });
}

void FindAnnounced(const AddressTaker& take, const std::filesystem::path& folder) {
    std::vector<Sign> signs = SignsIn(folder);
    TryToConnect(signs, take);
    for (const Sign& sign : signs) {
        if (sign.isRefused) {
            TakeAwayOldSign(sign.path, sign.port);
        }
    }
}

}  // namespace krv::suite
