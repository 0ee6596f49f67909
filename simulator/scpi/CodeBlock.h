// CodeBlock: the 16-bit codes of a block, most significant byte first, while it comes in. Memory is
// taken as the codes arrive: a declared length alone costs none.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "common/memory/SampleBuffer.h"

namespace krv::simulator {

using CodeArray = SampleBuffer<std::int16_t>;

class CodeBlock {
 public:
    // Throws std::bad_alloc when there is no address space for as many bytes.
    explicit CodeBlock(std::uint32_t bytes) : m_codes(bytes / sizeof(std::int16_t)) {}

    // Takes the next bytes; together never more than declared, which is an even number. Throws
    // std::bad_alloc.
    void Append(std::span<const std::byte> bytes);
    [[nodiscard]] CodeArray TakeCodes() { return std::move(m_codes); }

 private:
    void AppendCode(std::byte high, std::byte low);

    CodeArray m_codes;
    // The first byte of a code whose second is still to come.
    std::optional<std::byte> m_half;
};

}  // namespace krv::simulator
