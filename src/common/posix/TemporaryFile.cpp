#include "common/TemporaryFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include "common/Error.h"

namespace krv {
namespace {

// A handler reaches nothing but globals. Files beyond these only go with their objects.
std::array<std::atomic<const char*>, 8> g_paths{};

void Exchange(const char* from, const char* to) noexcept {
    for (std::atomic<const char*>& each : g_paths) {
        const char* expected = from;
        if (each.compare_exchange_strong(expected, to)) {
            return;
        }
    }
}

void Require(const std::error_code& failure) {
    if (failure) {
        throw Error(ErrorNumber::PathFileAccess,
                    "It can't be copied into the folder of temporary files: " + failure.message());
    }
}

void RequireSuccess(bool isDone) {
    Require(isDone ? std::error_code() : std::error_code(errno, std::generic_category()));
}

}  // namespace

TemporaryFile::TemporaryFile() {
    std::error_code failure;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(failure);
    Require(failure);
    m_path = (folder / "krv-XXXXXX").string();
    m_handle = mkostemp(m_path.data(), O_CLOEXEC);
    RequireSuccess(m_handle >= 0);
    Exchange(nullptr, m_path.c_str());
}

TemporaryFile::~TemporaryFile() {
    unlink(m_path.c_str());
    Exchange(m_path.c_str(), nullptr);
    close(m_handle);
}

void TemporaryFile::Write(std::span<const std::byte> bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = write(m_handle, bytes.data(), bytes.size());
        RequireSuccess(count >= 0 || errno == EINTR);
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

void TemporaryFile::RemoveAll() noexcept {
    for (const std::atomic<const char*>& each : g_paths) {
        if (const char* const path = each.load()) {
            unlink(path);
        }
    }
}

}  // namespace krv
