// Announcement: makes a simulated instrument on this computer known to a search for instruments.
//
// The sign is a file `krv-sim-PORT` in the system's temporary folder, which says what it is. What
// has such a name and says something else is somebody's, and stays. A sign stays behind when its
// instrument is ended by force; the next search removes it, and nothing else.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "suite/discovery/AddressTaker.h"

namespace krv::suite {

class Announcement {
 public:
    // Fails silently: an instrument that can't announce itself can still be reached by its address.
    explicit Announcement(std::uint16_t port,
                          const std::filesystem::path& folder = DefaultFolder()) noexcept;
    ~Announcement();
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;

    [[nodiscard]] static std::filesystem::path DefaultFolder() noexcept;

 private:
    // Empty where there is none of its own.
    std::filesystem::path m_sign;
    std::string m_content;
};

// The addresses of the instruments that have announced themselves and accept connections. Of many
// signs only some are looked at.
void FindAnnounced(const AddressTaker& take,
                   const std::filesystem::path& folder = Announcement::DefaultFolder());

}  // namespace krv::suite
