// StoredZip: a zip archive of a few short files, as they are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krv::doctor {

class StoredZip {
 public:
    // Names are UTF-8, with '/' between folders.
    void Add(const std::string& name, std::string_view content);
    // The whole archive.
    [[nodiscard]] std::string Bytes() const;

 private:
    std::string m_members;
    std::string m_directory;
    std::uint16_t m_count = 0;
};

}  // namespace krv::doctor
