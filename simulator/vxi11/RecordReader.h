// RecordReader: puts records together from a stream of their fragments, as remote procedure calls
// go over TCP. Each fragment has a header of four bytes: the top bit marks the last fragment of a
// record, the rest is the length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace krv::simulator {

class RecordReader {
 public:
    // Records may have so many bytes.
    explicit RecordReader(std::size_t most) noexcept : m_most(most) {}

    // Takes bytes in up to the end of a record; returns how many. Memory is taken as they come: a
    // declared length alone costs none. Throws XdrFailure when the record becomes too long.
    std::size_t Feed(std::span<const std::byte> bytes);
    // The record is there; the next byte starts a new one.
    [[nodiscard]] bool IsComplete() const noexcept { return m_isComplete; }
    [[nodiscard]] std::span<const std::byte> Record() const noexcept { return m_record; }

 private:
    void TakeHeaderByte(std::byte byte);

    std::size_t m_most;
    std::vector<std::byte> m_record;
    std::uint32_t m_header = 0;
    unsigned m_headerBytes = 0;
    std::size_t m_left = 0;
    // Empty fragments have no bytes that a record's limit would count.
    unsigned m_fragments = 0;
    bool m_isComplete = false;
};

// The record as one fragment. It has less than 2^31 bytes.
[[nodiscard]] std::string AsRecord(const std::string& message);

}  // namespace krv::simulator
