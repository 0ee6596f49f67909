#include "formats/Inflate.h"

#include "formats/Fault.h"

#ifdef KRV_HAS_ZLIB
#include <zlib.h>

#include <array>
#include <new>
#include <utility>
#endif

namespace krv::formats {

#ifdef KRV_HAS_ZLIB
namespace {

class InflatedBytes final : public ByteStream {
 public:
    InflatedBytes(std::string file, std::unique_ptr<ByteStream> packed, Packing packing)
        : m_file(std::move(file)), m_packed(std::move(packed)) {
        // How zlib is told the packing.
        static constexpr std::array<int, 3> WindowBits{-MAX_WBITS, 16 + MAX_WBITS, MAX_WBITS};
        if (inflateInit2(&m_state, WindowBits.at(static_cast<std::size_t>(packing))) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    InflatedBytes(const InflatedBytes&) = delete;
    InflatedBytes& operator=(const InflatedBytes&) = delete;
    ~InflatedBytes() override { inflateEnd(&m_state); }

    std::size_t Read(std::span<std::byte> destination) override {
        std::size_t done = 0;
        while (done < destination.size() && !m_isAtEnd) {
            done += Inflate(destination.subspan(done));
        }
        return done;
    }

 private:
    std::size_t Inflate(std::span<std::byte> destination) {
        if (m_state.avail_in == 0) {
            const std::size_t got = m_packed->Read(std::as_writable_bytes(std::span(m_block)));
            if (got == 0) {
                throw FileFault(m_file, "The compressed data is cut.");
            }
            m_state.next_in = m_block.data();
            m_state.avail_in = static_cast<uInt>(got);
        }
        constexpr std::size_t Most = std::size_t{1} << 20U;
        const auto room = static_cast<uInt>(destination.size() < Most ? destination.size() : Most);
        m_state.next_out = reinterpret_cast<Bytef*>(destination.data());
        m_state.avail_out = room;
        const int result = inflate(&m_state, Z_NO_FLUSH);
        m_isAtEnd = result == Z_STREAM_END;
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
            throw FileFault(m_file, "The compressed data is damaged.");
        }
        return room - m_state.avail_out;
    }

    std::string m_file;
    std::unique_ptr<ByteStream> m_packed;
    z_stream m_state{};
    std::array<Bytef, std::size_t{64} << 10U> m_block{};
    bool m_isAtEnd = false;
};

}  // namespace

const char* MissingToInflate() noexcept {
    return nullptr;
}

std::unique_ptr<ByteStream> Inflated(const std::string& file, std::unique_ptr<ByteStream> packed,
                                     Packing packing) {
    return std::make_unique<InflatedBytes>(file, std::move(packed), packing);
}
#else
const char* MissingToInflate() noexcept {
    return "zlib (package zlib1g-dev, for Windows libz-mingw-w64-dev)";
}

std::unique_ptr<ByteStream> Inflated(const std::string& file, std::unique_ptr<ByteStream>,
                                     Packing) {
    throw FileFault(file, std::string("It is compressed; reading it takes a build with ") +
                              MissingToInflate() + '.');
}
#endif

}  // namespace krv::formats
