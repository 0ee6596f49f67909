#include "common/WholeFile.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <streambuf>
#include <string_view>
#include <utility>

#include "common/Hexadecimal.h"
#include "common/NewFile.h"

namespace krv {
namespace {

std::error_code LastError() {
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

// What is in the way of a file.
enum class Obstacle : int { NoRegularFile = 1, PipeWithoutReader };

class ObstacleCategory final : public std::error_category {
 public:
    [[nodiscard]] const char* name() const noexcept override { return "obstacle"; }
    [[nodiscard]] std::string message(int obstacle) const override {
        return static_cast<Obstacle>(obstacle) == Obstacle::PipeWithoutReader
                   ? "No program reads from this pipe."
                   : "What has this name is not a regular file.";
    }
};

std::error_code CodeOf(Obstacle obstacle) {
    static const ObstacleCategory category;
    return {static_cast<int>(obstacle), category};
}

// A file as the buffer of a stream, which remembers the reason of the first failure.
class FileBuffer final : public std::streambuf {
 public:
    explicit FileBuffer(FileHandle file) : m_file(std::move(file)) {}

    // Why not all of it is in the file.
    std::error_code Close() {
        errno = 0;
        Note(std::fflush(m_file.get()) == 0);
        errno = 0;
        Note(std::fclose(m_file.release()) == 0);
        return m_failure;
    }

 protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        // Of nothing there may be no place.
        if (count == 0) {
            return 0;
        }
        errno = 0;
        const auto size = static_cast<std::size_t>(count);
        return Note(std::fwrite(bytes, 1, size, m_file.get()) == size) ? count : 0;
    }
    int_type overflow(int_type character) override {
        const char byte = traits_type::to_char_type(character);
        const bool isEnd = traits_type::eq_int_type(character, traits_type::eof());
        return isEnd || xsputn(&byte, 1) == 1 ? traits_type::not_eof(character)
                                              : traits_type::eof();
    }

 private:
    bool Note(bool succeeded) {
        if (!succeeded && !m_failure) {
            m_failure = LastError();
        }
        return succeeded;
    }

    FileHandle m_file;
    std::error_code m_failure;
};

std::error_code WriteAndClose(FileHandle file, const FileWriter& write) {
    FileBuffer buffer(std::move(file));
    std::ostream stream(&buffer);
    write(stream);
    return buffer.Close();
}

FileWriter WriterOf(std::span<const std::byte> bytes) {
    return [bytes](std::ostream& file) {
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    };
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
    return Prepare(WriterOf(bytes));
}

std::error_code WholeFile::Prepare(const FileWriter& write) {
    if (const std::error_code obstacle = WhyNotReplaceable(m_target)) {
        return obstacle;
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
    return WriteAndClose(std::move(file), write);
}

std::error_code WholeFile::Finish() {
    // Something else may have come there meanwhile.
    std::error_code failure = WhyNotReplaceable(m_target);
    if (failure) {
        return failure;
    }
    std::filesystem::rename(m_fresh, m_target, failure);
    if (!failure) {
        m_fresh.clear();
    }
    return failure;
}

std::error_code WhyNotReplaceable(const std::filesystem::path& target) {
    std::error_code failure;
    switch (std::filesystem::symlink_status(target, failure).type()) {
        case std::filesystem::file_type::regular:
        case std::filesystem::file_type::not_found:
            return {};
        case std::filesystem::file_type::directory:
            return std::make_error_code(std::errc::is_a_directory);
        case std::filesystem::file_type::none:
            return failure;
        default:
            return CodeOf(Obstacle::NoRegularFile);
    }
}

std::error_code RemoveRegularFile(const std::filesystem::path& target) {
    std::error_code failure = WhyNotReplaceable(target);
    if (!failure) {
        std::filesystem::remove(target, failure);
    }
    return failure;
}

FileHandle OpenToWrite(const std::filesystem::path& target, std::error_code& failure) {
    errno = 0;
    FileHandle file(IsDeviceOrPipe(target) ? OpenExistingFile(target) : OpenNewFile(target),
                    &std::fclose);
    const std::error_code reason = file ? std::error_code() : LastError();
    failure = reason == std::errc::no_such_device_or_address && std::filesystem::is_fifo(target)
                  ? CodeOf(Obstacle::PipeWithoutReader)
                  : reason;
    return file;
}

std::error_code WriteWholeFile(const std::filesystem::path& target, const FileWriter& write) {
    if (IsDeviceOrPipe(target)) {
        std::error_code failure;
        FileHandle file = OpenToWrite(target, failure);
        return file ? WriteAndClose(std::move(file), write) : failure;
    }
    WholeFile file(target);
    const std::error_code failure = file.Prepare(write);
    return failure ? failure : file.Finish();
}

std::error_code WriteWholeFile(const std::filesystem::path& target,
                               std::span<const std::byte> bytes) {
    return WriteWholeFile(target, WriterOf(bytes));
}

}  // namespace krv
