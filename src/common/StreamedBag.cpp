#include "common/StreamedBag.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "common/Error.h"

namespace krv {
namespace {

constexpr std::string_view Signature = "KRVCTL\r\n";
constexpr std::size_t LengthBytes = 4;
constexpr std::size_t HeaderBytes = Signature.size() + LengthBytes;
// What the contents' own frame adds to their entries is far less.
constexpr std::size_t LongestContents = BagLimit::Bytes + 1024;
constexpr std::size_t BlockBytes = std::size_t{64} << 10;

using Header = std::array<std::byte, HeaderBytes>;

std::optional<std::size_t> LengthIn(const Header& header) {
    if (std::memcmp(header.data(), Signature.data(), Signature.size()) != 0) {
        return std::nullopt;
    }
    std::uint32_t length = 0;
    for (std::size_t index = 0; index < LengthBytes; ++index) {
        length |= std::to_integer<std::uint32_t>(header[Signature.size() + index]) << (8 * index);
    }
    return length <= LongestContents ? std::optional<std::size_t>(length) : std::nullopt;
}

// Fewer bytes than asked for when the source ends.
std::vector<std::byte> TakeBytes(const ByteSource& source, std::size_t count) {
    std::vector<std::byte> bytes;
    while (bytes.size() < count) {
        const std::size_t before = bytes.size();
        const std::size_t wanted = std::min(BlockBytes, count - before);
        bytes.resize(before + wanted);
        const std::size_t taken = source(std::span(bytes).subspan(before));
        bytes.resize(before + std::min(taken, wanted));
        if (taken < wanted) {
            break;
        }
    }
    return bytes;
}

}  // namespace

std::vector<std::byte> EncodeStreamedBag(const MemoryPropertyBag& bag) {
    const std::vector<std::byte> contents = bag.Contents();
    std::vector<std::byte> bytes;
    bytes.reserve(HeaderBytes + contents.size());
    for (const char character : Signature) {
        bytes.push_back(static_cast<std::byte>(character));
    }
    for (std::size_t index = 0; index < LengthBytes; ++index) {
        bytes.push_back(static_cast<std::byte>((contents.size() >> (8 * index)) & 0xFF));
    }
    bytes.insert(bytes.end(), contents.begin(), contents.end());
    return bytes;
}

std::optional<MemoryPropertyBag> ReadStreamedBag(const ByteSource& source) {
    Header header{};
    const std::size_t taken = source(header);
    if (taken == 0) {
        return MemoryPropertyBag();
    }
    const auto length = taken == header.size() ? LengthIn(header) : std::nullopt;
    if (!length) {
        return std::nullopt;
    }
    const std::vector<std::byte> contents = TakeBytes(source, *length);
    if (contents.size() < *length) {
        return std::nullopt;
    }
    MemoryPropertyBag bag;
    try {
        bag.SetContents(contents);
    } catch (const Error& error) {
        if (error.Number() != ErrorNumber::InvalidFileFormat) {
            throw;
        }
        return std::nullopt;
    }
    return bag;
}

}  // namespace krv
