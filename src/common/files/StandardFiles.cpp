#include "common/files/StandardFiles.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "common/Error.h"
#include "common/WholeFile.h"
#include "common/files/ModificationTime.h"

namespace krv::files {
namespace {

namespace fs = std::filesystem;

std::string Quoted(const std::string& path) {
    return '"' + path + '"';
}

Error NotFound(const std::string& path) {
    return Error(ErrorNumber::FileNotFound,
                 "File not found: " + Quoted(path) + ".  Please check the name and the folder.");
}

Error NoFile(const std::string& path) {
    return Error(ErrorNumber::PathFileAccess,
                 "Path/File access error: " + Quoted(path) +
                     " is not a file that can be read from beginning to end.  "
                     "Please choose a file.");
}

Error FromSystem(const std::string& path, const std::error_code& code) {
    if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory ||
        code == std::errc::invalid_argument || code == std::errc::filename_too_long) {
        return NotFound(path);
    }
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted) {
        return Error(ErrorNumber::PermissionDenied,
                     "Permission denied: " + Quoted(path) +
                         ".  Please check that you may read the file and that no other program "
                         "has locked it.");
    }
    return Error(ErrorNumber::PathFileAccess,
                 "Path/File access error: " + Quoted(path) + " (" + code.message() + ").");
}

// Throws Error 53 for a name that the platform cannot spell.
fs::path ToPath(const std::string& path) {
    try {
        return PathOf(path);
    } catch (const std::system_error&) {
        throw NotFound(path);
    }
}

// The path of a regular file; anything else throws.
fs::path RegularFile(const std::string& path) {
    fs::path result = ToPath(path);
    std::error_code code;
    const fs::file_status status = fs::status(result, code);
    if (path.empty() || status.type() == fs::file_type::not_found) {
        throw NotFound(path);
    }
    if (code) {
        throw FromSystem(path, code);
    }
    if (status.type() != fs::file_type::regular) {
        throw NoFile(path);
    }
    return result;
}

class StandardFile final : public ports::SequentialFile {
 public:
    explicit StandardFile(const std::string& name) : m_name(name) {
        const fs::path path = RegularFile(name);
        m_file.pubsetbuf(nullptr, 0);
        errno = 0;
        if (m_file.open(path, std::ios_base::in | std::ios_base::binary) == nullptr) {
            throw FromSystem(name, std::error_code(errno, std::generic_category()));
        }
    }

    std::size_t Read(std::span<std::byte> destination) override {
        try {
            return static_cast<std::size_t>(
                m_file.sgetn(reinterpret_cast<char*>(destination.data()),
                             static_cast<std::streamsize>(destination.size())));
        } catch (const std::ios_base::failure&) {
            throw Error(ErrorNumber::DeviceInputOutput,
                        "Device I/O error while reading " + Quoted(m_name) +
                            ".  Please check the drive or the network connection.");
        }
    }

 private:
    std::string m_name;
    std::filebuf m_file;
};

}  // namespace

bool StandardFiles::FileExists(const std::string& path) {
    try {
        std::error_code code;
        return !path.empty() && fs::is_regular_file(ToPath(path), code);
    } catch (const Error&) {
        return false;
    }
}

std::uint64_t StandardFiles::FileSize(const std::string& path) {
    std::error_code code;
    const std::uint64_t size = fs::file_size(RegularFile(path), code);
    if (code) {
        throw FromSystem(path, code);
    }
    return size;
}

ports::FileTime StandardFiles::DateLastModified(const std::string& path) {
    std::error_code code;
    const std::int64_t ticks = ModificationTicks(RegularFile(path), code);
    if (code) {
        throw FromSystem(path, code);
    }
    return {ticks};
}

std::unique_ptr<ports::SequentialFile> StandardFiles::OpenToRead(const std::string& path) {
    return std::make_unique<StandardFile>(path);
}

}  // namespace krv::files
