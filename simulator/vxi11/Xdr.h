// XDR, the data representation of remote procedure calls (RFC 4506): what VXI-11 and the port
// mapper need of it. Everything takes a multiple of four bytes, the most significant byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string>
#include <string_view>

namespace krv::simulator {

// What comes in ends too early, or holds more than there may be.
class XdrFailure final : public std::exception {
 public:
    [[nodiscard]] const char* what() const noexcept override { return "damaged data"; }
};

// Takes data apart that may come from anywhere. Its members throw XdrFailure.
class XdrReader {
 public:
    // The bytes outlive the reader.
    explicit XdrReader(std::span<const std::byte> bytes) noexcept : m_bytes(bytes) {}

    std::uint32_t Number();
    bool Boolean() { return Number() != 0; }
    // Bytes with their length in front, at most so many.
    std::span<const std::byte> Opaque(std::size_t most);
    std::string_view Text(std::size_t most);

 private:
    std::span<const std::byte> Take(std::size_t count);

    std::span<const std::byte> m_bytes;
};

class XdrWriter {
 public:
    XdrWriter& Number(std::uint32_t number);
    XdrWriter& Opaque(std::string_view bytes);
    // Data that is written already.
    XdrWriter& Written(const XdrWriter& data);
    [[nodiscard]] const std::string& Bytes() const noexcept { return m_bytes; }

 private:
    std::string m_bytes;
};

}  // namespace krv::simulator
