#include "formats/MatlabElements.h"

#include <algorithm>
#include <array>

#include "formats/Fault.h"
#include "formats/SampleType.h"

namespace krv::formats {
namespace {
constexpr std::uint64_t TagBytes = 8;
constexpr std::uint32_t MostSmallBytes = 4;
}  // namespace

MatlabTag MatlabElements::Next(std::uint64_t end) {
    if (end - m_position < TagBytes) {
        throw Fault("An element is missing.");
    }
    const std::uint32_t first = Word();
    const std::uint32_t second = Word();
    if (const std::uint32_t smallBytes = first >> 16U; smallBytes > 0) {
        if (smallBytes > MostSmallBytes) {
            throw Fault("This is not the tag of an element.");
        }
        return {first & 0xFFFFU, smallBytes, true, second};
    }
    if (second > end - m_position) {
        throw Fault("An element of " + std::to_string(second) + " bytes doesn't fit into the " +
                    std::to_string(end - m_position) + " that are left.");
    }
    return {first, second, false, 0};
}

std::uint32_t MatlabElements::Word() {
    std::array<std::byte, 4> bytes{};
    if (Read(bytes) < bytes.size()) {
        throw Fault("The file is cut.");
    }
    return LoadAs<std::uint32_t>(bytes, m_isBigEndian);
}

std::uint64_t MatlabElements::EndOf(const MatlabTag& tag, std::uint64_t end) const {
    return tag.isSmall ? m_position : std::min(end, m_position + (tag.bytes + 7) / 8 * 8);
}

void MatlabElements::SkipTo(std::uint64_t end) {
    if (!SkipBytes(m_stream, end - m_position)) {
        throw Fault("The file is cut.");
    }
    m_position = end;
}

std::size_t MatlabElements::Read(std::span<std::byte> destination) {
    const std::size_t count = m_stream.Read(destination);
    m_position += count;
    return count;
}

Error MatlabElements::Fault(std::string_view reason) const {
    return FileFault(m_place + std::to_string(m_position), reason);
}

}  // namespace krv::formats
