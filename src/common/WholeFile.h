// WholeFile: a file that is there whole or not at all, whatever happens while it is written.
//
// The bytes go to a new file beside the target, under a name of its own, which takes the target's
// place at the end. A link at the target is replaced, never followed.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <system_error>
#include <utility>

namespace krv {

// The path of a file whose name is UTF-8.
[[nodiscard]] std::filesystem::path PathOf(const std::string& utf8);

// Two of these may be prepared before the first is put into its place, so that files which belong
// together come together. One thread's.
class WholeFile {
 public:
    explicit WholeFile(std::filesystem::path target) : m_target(std::move(target)) {}
    WholeFile(WholeFile&& other) noexcept;
    WholeFile& operator=(WholeFile&&) = delete;
    // Takes away what was prepared and not put into its place.
    ~WholeFile();

    // Writes all bytes beside the target. The error tells why it could not.
    [[nodiscard]] std::error_code Prepare(std::span<const std::byte> bytes);
    // Puts what was prepared into the target's place.
    [[nodiscard]] std::error_code Finish();

 private:
    std::filesystem::path m_target;
    // Empty while nothing is prepared.
    std::filesystem::path m_fresh;
};

// What is written there can't be replaced by what is written next.
[[nodiscard]] bool IsDeviceOrPipe(const std::filesystem::path& path);

// Both steps. What was there stays when it fails. A device or a pipe is never replaced but written
// to.
[[nodiscard]] std::error_code WriteWholeFile(const std::filesystem::path& target,
                                             std::span<const std::byte> bytes);

}  // namespace krv
