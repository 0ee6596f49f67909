#include "formats/FileOnDisk.h"

#include <cstddef>
#include <ostream>
#include <random>
#include <system_error>
#include <vector>

#include "common/Error.h"
#include "common/WholeFile.h"

namespace krv::formats {
namespace {

constexpr std::size_t BytesAtOnce = std::size_t{1} << 20U;

void Require(const std::error_code& failure) {
    if (failure) {
        throw Error(ErrorNumber::PathFileAccess,
                    "It can't be copied into the folder of temporary files: " + failure.message());
    }
}

void CopyTo(std::ostream& copy, ByteStream& stream) {
    std::vector<std::byte> block(BytesAtOnce);
    std::size_t count = 0;
    do {
        count = stream.Read(block);
        copy.write(reinterpret_cast<const char*>(block.data()),
                   static_cast<std::streamsize>(count));
    } while (count == block.size());
}

}  // namespace

FileOnDisk::OwnFolder::OwnFolder() {
    std::error_code failure;
    const std::filesystem::path among = std::filesystem::temp_directory_path(failure);
    Require(failure);
    std::random_device random;
    // False where the name is taken.
    do {
        m_path = among / ("krv-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(m_path, failure) && !failure);
    Require(failure);
    std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, failure);
}

FileOnDisk::OwnFolder::~OwnFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

FileOnDisk::FileOnDisk(const InputFile& file) : m_path(file.name) {
    if (!file.isInMemory) {
        return;
    }
    const std::filesystem::path copy = m_folder.emplace().Path() / "data";
    const auto stream = file.files.OpenToRead(file.name);
    Require(WriteWholeFile(copy, [&](std::ostream& to) { CopyTo(to, *stream); }));
    const std::u8string path = copy.u8string();
    m_path.assign(path.begin(), path.end());
}

}  // namespace krv::formats
