#include "common/WholeFile.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <random>
#include <utility>

#include "common/Hexadecimal.h"
#include "common/NewFile.h"

namespace krv {
namespace {

using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

std::error_code LastError() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

std::error_code WriteAndClose(FileHandle file, std::span<const std::byte> bytes) {
    errno = 0;
    const bool written =
        (bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size()) &&
        std::fflush(file.get()) == 0;
    const std::error_code failure = written ? std::error_code() : LastError();
    const bool closed = std::fclose(file.release()) == 0;
    return written && !closed ? LastError() : failure;
}

}  // namespace

bool IsDeviceOrPipe(const std::filesystem::path& path) {
    // A link to what this program was started with, perhaps a plain file.
    const std::string name = path.generic_string();
    if (name == "/dev/stdout" || name == "/dev/stderr" || name.starts_with("/dev/fd/")) {
        return true;
    }
    std::error_code ignored;
    const auto kind = std::filesystem::status(path, ignored).type();
    return kind == std::filesystem::file_type::character ||
           kind == std::filesystem::file_type::block || kind == std::filesystem::file_type::fifo ||
           kind == std::filesystem::file_type::socket;
}

std::filesystem::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

WholeFile::WholeFile(WholeFile&& other) noexcept
    : m_target(std::move(other.m_target)),
      m_fresh(std::exchange(other.m_fresh, std::filesystem::path())) {}

WholeFile::~WholeFile() {
    if (!m_fresh.empty()) {
        std::error_code ignored;
        std::filesystem::remove(m_fresh, ignored);
    }
}

std::error_code WholeFile::Prepare(std::span<const std::byte> bytes) {
    std::error_code ignored;
    if (std::filesystem::is_directory(m_target, ignored)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    constexpr int Tries = 16;
    FileHandle file(nullptr, &std::fclose);
    std::filesystem::path fresh;
    for (int count = 0; !file && (count == 0 || (errno == EEXIST && count < Tries)); ++count) {
        fresh = m_target;
        fresh += "." + Hexadecimal(std::random_device()()) + ".part";
        errno = 0;
        file.reset(OpenNewFile(fresh));
    }
    if (!file) {
        return LastError();
    }
    m_fresh = std::move(fresh);
    return WriteAndClose(std::move(file), bytes);
}

std::error_code WholeFile::Finish() {
    std::error_code failure;
    std::filesystem::rename(m_fresh, m_target, failure);
    if (!failure) {
        m_fresh.clear();
    }
    return failure;
}

std::error_code WriteWholeFile(const std::filesystem::path& target,
                               std::span<const std::byte> bytes) {
    if (IsDeviceOrPipe(target)) {
        errno = 0;
        FileHandle file(OpenExistingFile(target), &std::fclose);
        return file ? WriteAndClose(std::move(file), bytes) : LastError();
    }
    WholeFile file(target);
    const std::error_code failure = file.Prepare(bytes);
    return failure ? failure : file.Finish();
}

}  // namespace krv
