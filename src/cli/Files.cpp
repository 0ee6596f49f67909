#include "cli/Files.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <fstream>
#include <system_error>

#include "common/Error.h"

namespace krv::cli {
namespace {

[[noreturn]] void ThrowUnwritable(const std::string& file, const std::string& reason) {
    throw Error(ErrorNumber::PathFileAccess, "Can't write " + file + ": " + reason);
}

std::ofstream OpenToWrite(const std::string& file, std::ios::openmode mode) {
    errno = 0;
    std::ofstream stream(PathOf(file), mode | std::ios::binary);
    if (!stream) {
        ThrowUnwritable(file, std::generic_category().message(errno));
    }
    return stream;
}

void Finish(std::ofstream& stream, const std::string& file) {
    errno = 0;
    stream.close();
    if (!stream) {
        ThrowUnwritable(file, errno == 0 ? std::string("The device is full or has failed.")
                                         : std::generic_category().message(errno));
    }
}

void WriteBytes(std::ofstream& stream, std::span<const std::byte> bytes) {
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
}

void WriteSwapped(std::ofstream& stream, std::span<const std::int16_t> codes) {
    std::array<std::int16_t, 4096> block{};
    while (!codes.empty()) {
        const auto part = codes.first(std::min(codes.size(), block.size()));
        std::transform(part.begin(), part.end(), block.begin(), [](std::int16_t code) {
            const auto bits = static_cast<std::uint16_t>(code);
            return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits << 8 | bits >> 8));
        });
        WriteBytes(stream, std::as_bytes(std::span(block).first(part.size())));
        codes = codes.subspan(part.size());
    }
}

}  // namespace

std::filesystem::path PathOf(const std::string& utf8) {
    return std::u8string(utf8.begin(), utf8.end());
}

bool AreSameFile(const std::string& left, const std::string& right) {
    std::error_code ignored;
    return std::filesystem::equivalent(PathOf(left), PathOf(right), ignored);
}

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(PathOf(folder), error);
    if (!std::filesystem::is_directory(PathOf(folder))) {
        throw Error(ErrorNumber::PathFileAccess,
                    "Can't make the folder " + folder + ": " +
                        (error ? error.message() : std::string("A file has its name.")));
    }
}

void RequireWritable(const std::string& file) {
    OpenToWrite(file, std::ios::app);
}

void WriteWhole(const std::string& file, std::span<const std::byte> bytes) {
    const std::filesystem::path target = PathOf(file);
    const std::string fresh = file + ".part";
    std::error_code failure;
    try {
        std::ofstream stream = OpenToWrite(fresh, std::ios::trunc);
        WriteBytes(stream, bytes);
        Finish(stream, fresh);
        std::filesystem::rename(PathOf(fresh), target, failure);
    } catch (const Error&) {
        std::error_code ignored;
        std::filesystem::remove(PathOf(fresh), ignored);
        throw;
    }
    if (failure) {
        std::error_code ignored;
        std::filesystem::remove(PathOf(fresh), ignored);
        ThrowUnwritable(file, failure.message());
    }
}

void WriteText(const std::string& file, std::string_view text) {
    std::ofstream stream = OpenToWrite(file, std::ios::trunc);
    WriteBytes(stream, std::as_bytes(std::span(text)));
    Finish(stream, file);
}

void WriteCodes(const std::string& file, std::span<const std::int16_t> codes) {
    std::ofstream stream = OpenToWrite(file, std::ios::trunc);
    if constexpr (std::endian::native == std::endian::little) {
        WriteBytes(stream, std::as_bytes(codes));
    } else {
        WriteSwapped(stream, codes);
    }
    Finish(stream, file);
}

}  // namespace krv::cli
