// MatlabElements: the elements of a MATLAB file of level 5 or of a variable that is packed in one,
// taken one after another. An element is a tag, which tells its kind and its size, and that many
// bytes, which may be elements again. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "common/Error.h"
#include "formats/ByteStreams.h"

namespace krv::formats {

struct MatlabTag {
    std::uint32_t kind = 0;
    // Of the content.
    std::uint64_t bytes = 0;
    // The content of a small element is in its tag: this is it.
    bool isSmall = false;
    std::uint32_t word = 0;
};

class MatlabElements {
 public:
    // The place is what an error's position is written behind.
    MatlabElements(std::string place, ByteStream& stream, bool isBigEndian)
        : m_place(std::move(place)), m_stream(stream), m_isBigEndian(isBigEndian) {}

    [[nodiscard]] std::uint64_t Position() const noexcept { return m_position; }

    // The next tag; the element must end at `end` or before.
    [[nodiscard]] MatlabTag Next(std::uint64_t end);
    [[nodiscard]] std::uint32_t Word();
    // Where the element ends whose tag was taken last, with what fills it up to eight bytes.
    [[nodiscard]] std::uint64_t EndOf(const MatlabTag& tag, std::uint64_t end) const;
    // Passes over an element.
    void Skip(const MatlabTag& tag, std::uint64_t end) { SkipTo(EndOf(tag, end)); }
    void SkipTo(std::uint64_t end);
    // As many bytes as there are.
    std::size_t Read(std::span<std::byte> destination);

    // An error at this position.
    [[nodiscard]] Error Fault(std::string_view reason) const;

 private:
    std::string m_place;
    ByteStream& m_stream;
    bool m_isBigEndian;
    std::uint64_t m_position = 0;
};

}  // namespace krv::formats
