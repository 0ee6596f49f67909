// WholeFile: a file that is there whole or not at all, whatever happens while it is written.
//
// The bytes go to a new file beside the target, under a name of its own, which takes the target's
// place at the end. What stands there and is no regular file (a folder, a link) is never replaced,
// nor is a link followed.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <span>
#include <string>
#include <system_error>
#include <utility>

namespace krv {

// The path of a file whose name is UTF-8.
[[nodiscard]] std::filesystem::path PathOf(const std::string& utf8);

// Puts the bytes of a file into the stream. What it throws is passed on.
using FileWriter = std::function<void(std::ostream& file)>;

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
    [[nodiscard]] std::error_code Prepare(const FileWriter& write);
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

// Whether a new file may take this place: nothing is there, or a regular file. The error is why
// not.
[[nodiscard]] std::error_code WhyNotReplaceable(const std::filesystem::path& target);

// Takes away a regular file, and nothing else. No error where nothing is there.
[[nodiscard]] std::error_code RemoveRegularFile(const std::filesystem::path& target);

using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
// For what is written piece by piece: a device or pipe as it is, or else a new file. Null with the
// reason, also where the name is taken.
[[nodiscard]] FileHandle OpenToWrite(const std::filesystem::path& target, std::error_code& failure);

// Both steps. What was there stays when it fails. A device or a pipe is never replaced but written
// to; a pipe that nobody reads from is waited for two seconds.
[[nodiscard]] std::error_code WriteWholeFile(const std::filesystem::path& target,
                                             const FileWriter& write);
[[nodiscard]] std::error_code WriteWholeFile(const std::filesystem::path& target,
                                             std::span<const std::byte> bytes);

}  // namespace krv
