#include "formats/FileOnDisk.h"

#include <cstddef>
#include <span>
#include <vector>

namespace krv::formats {

FileOnDisk::FileOnDisk(const InputFile& file) : m_path(file.name) {
    if (!file.isInMemory) {
        return;
    }
    m_copy.emplace();
    const auto stream = file.files.OpenToRead(file.name);
    std::vector<std::byte> block(std::size_t{1} << 20U);
    std::size_t count = 0;
    do {
        count = stream->Read(block);
        m_copy->Write(std::span(block).first(count));
    } while (count == block.size());
}

}  // namespace krv::formats
