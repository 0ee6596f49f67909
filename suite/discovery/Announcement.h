// Announcement: how a simulated instrument that runs on this computer lets others find it, whatever
// port it listens on.
//
// The sign is an empty folder `krv-sim-PORT` below the system's temporary one: making a folder
// neither follows a link nor overwrites what somebody else put there. A sign may outlive an
// instrument that was ended by force; whoever looks for instruments takes such signs away.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace krv::suite {

class Announcement {
 public:
    // Throws nothing: an instrument that can't make itself known still works by its address.
    explicit Announcement(std::uint16_t port,
                          const std::filesystem::path& folder = DefaultFolder()) noexcept;
    ~Announcement();
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;

    [[nodiscard]] static std::filesystem::path DefaultFolder() noexcept;

 private:
    std::filesystem::path m_sign;
};

// The addresses of the instruments that have announced themselves and accept connections, in the
// order of their ports.
[[nodiscard]] std::vector<std::string> AnnouncedAddresses(
    const std::filesystem::path& folder = Announcement::DefaultFolder());

}  // namespace krv::suite
