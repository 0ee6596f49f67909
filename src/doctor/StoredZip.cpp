#include "doctor/StoredZip.h"

#include <cstddef>
#include <span>

#include "common/Crc32.h"

namespace krv::doctor {
namespace {

// A number's low bytes, lowest first.
void Put(std::string& bytes, std::uint32_t number, int count) {
    for (int index = 0; index < count; ++index) {
        bytes += static_cast<char>(number >> (8 * index) & 0xFFU);
    }
}

// The first of January 1980: the archive tells nothing of when it was made.
constexpr std::uint32_t NoTime = 0x00210000;

// What a member's own header and its entry in the directory share.
std::string Description(const std::string& name, std::string_view content) {
    Crc32 sum;
    sum.Add(std::as_bytes(std::span(content.data(), content.size())));
    const auto size = static_cast<std::uint32_t>(content.size());
    std::string bytes;
    Put(bytes, 20, 2);
    constexpr std::uint32_t namesAreUtf8 = 0x0800;
    Put(bytes, namesAreUtf8, 2);
    Put(bytes, 0, 2);
    Put(bytes, NoTime, 4);
    Put(bytes, sum.Value(), 4);
    Put(bytes, size, 4);
    Put(bytes, size, 4);
    Put(bytes, static_cast<std::uint32_t>(name.size()), 2);
    Put(bytes, 0, 2);
    return bytes;
}

}  // namespace

void StoredZip::Add(const std::string& name, std::string_view content) {
    const auto place = static_cast<std::uint32_t>(m_members.size());
    const std::string description = Description(name, content);
    Put(m_members, 0x04034B50, 4);
    m_members += description;
    m_members += name;
    m_members += content;
    Put(m_directory, 0x02014B50, 4);
    Put(m_directory, 20, 2);
    m_directory += description;
    // Neither a comment, nor another disk, nor attributes.
    m_directory.append(10, '\0');
    Put(m_directory, place, 4);
    m_directory += name;
    ++m_count;
}

std::string StoredZip::Bytes() const {
    std::string bytes = m_members + m_directory;
    Put(bytes, 0x06054B50, 4);
    Put(bytes, 0, 4);
    Put(bytes, m_count, 2);
    Put(bytes, m_count, 2);
    Put(bytes, static_cast<std::uint32_t>(m_directory.size()), 4);
    Put(bytes, static_cast<std::uint32_t>(m_members.size()), 4);
    Put(bytes, 0, 2);
    return bytes;
}

}  // namespace krv::doctor
