#include "simulator/device/FileStorage.h"

#include "simulator/scpi/AsciiCase.h"

namespace krv::simulator {

void FileStorage::Put(std::string_view name, std::string bytes) {
    m_files.insert_or_assign(AsciiUpper(name), std::move(bytes));
}

const std::string* FileStorage::Find(std::string_view name) const {
    const auto found = m_files.find(AsciiUpper(name));
    return found == m_files.end() ? nullptr : &found->second;
}

bool FileStorage::Delete(std::string_view name) {
    return m_files.erase(AsciiUpper(name)) != 0;
}

}  // namespace krv::simulator
