#include "formats/ByteStreams.h"

#include <algorithm>
#include <utility>

namespace krv::formats {
namespace {

class Piece final : public ByteStream {
 public:
    Piece(std::unique_ptr<ByteStream> stream, std::uint64_t first, std::uint64_t count)
        : m_stream(std::move(stream)), m_first(first), m_left(count) {}

    std::size_t Read(std::span<std::byte> destination) override {
        if (m_first > 0 && !SkipBytes(*m_stream, std::exchange(m_first, 0))) {
            m_left = 0;
        }
        const auto wanted = std::min<std::uint64_t>(m_left, destination.size());
        const std::size_t count =
            m_stream->Read(destination.first(static_cast<std::size_t>(wanted)));
        m_left -= count;
        return count;
    }

 private:
    std::unique_ptr<ByteStream> m_stream;
    std::uint64_t m_first;
    std::uint64_t m_left;
};

class MemoryBytes final : public ByteStream {
 public:
    MemoryBytes(std::shared_ptr<const void> owner, std::span<const std::byte> bytes)
        : m_owner(std::move(owner)), m_rest(bytes) {}

    std::size_t Read(std::span<std::byte> destination) override {
        const std::size_t count = std::min(destination.size(), m_rest.size());
        std::ranges::copy(m_rest.first(count), destination.begin());
        m_rest = m_rest.subspan(count);
        return count;
    }

 private:
    std::shared_ptr<const void> m_owner;
    std::span<const std::byte> m_rest;
};

}  // namespace

std::unique_ptr<ByteStream> OpenPiece(const InputFile& file, std::uint64_t first,
                                      std::uint64_t count) {
    return PieceOf(file.files.OpenToRead(file.name), first, count);
}

std::unique_ptr<ByteStream> PieceOf(std::unique_ptr<ByteStream> stream, std::uint64_t first,
                                    std::uint64_t count) {
    return std::make_unique<Piece>(std::move(stream), first, count);
}

std::unique_ptr<ByteStream> SharedBytes(std::shared_ptr<const void> owner,
                                        std::span<const std::byte> bytes) {
    return std::make_unique<MemoryBytes>(std::move(owner), bytes);
}

bool SkipBytes(ByteStream& stream, std::uint64_t count) {
    std::vector<std::byte> block(
        static_cast<std::size_t>(std::min<std::uint64_t>(count, std::size_t{256} << 10U)));
    while (count > 0) {
        const auto wanted = std::min<std::uint64_t>(count, block.size());
        const std::size_t got =
            stream.Read(std::span(block).first(static_cast<std::size_t>(wanted)));
        count -= got;
        if (got < wanted) {
            return false;
        }
    }
    return true;
}

std::vector<std::byte> ReadPiece(const InputFile& file, std::uint64_t first, std::size_t count) {
    std::vector<std::byte> bytes(count);
    bytes.resize(OpenPiece(file, first, count)->Read(bytes));
    return bytes;
}

}  // namespace krv::formats
