// MATLAB files of level 5 and 7: variables that are elements with elements in them, or are packed.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string>

#include "formats/Inflate.h"
#include "formats/MatlabChecks.h"
#include "formats/MatlabElements.h"

namespace krv::formats {
namespace {

constexpr std::uint64_t Level5HeaderBytes = 128;
// No more comes out of a compressed byte.
constexpr std::uint64_t LargestRatio = 1032;
constexpr std::uint64_t MostDimensions = 32;

constexpr std::uint32_t Int32Element = 5;
constexpr std::uint32_t UInt32Element = 6;
constexpr std::uint32_t ArrayElement = 14;
constexpr std::uint32_t PackedElement = 15;

enum ArrayKind : std::uint32_t {
    CellArray = 1,
    StructureArray = 2,
    LetterArray = 4,
    DoubleArray = 6,
    UInt64Array = 15,
    FunctionArray = 16,
    OpaqueArray = 17
};
constexpr std::uint32_t ComplexFlag = 0x800;

// The bytes of one value of an element of numbers or letters; 0 for other elements.
std::uint64_t ValueBytesOf(std::uint32_t kind) {
    static constexpr std::array<std::uint8_t, 19> Sizes{0, 1, 1, 2, 2, 4, 4, 4, 0, 8,
                                                        0, 0, 8, 8, 0, 0, 1, 2, 4};
    return kind < Sizes.size() ? Sizes.at(kind) : 0;
}

// The bytes of a packed variable.
class PackedBytes final : public ByteStream {
 public:
    PackedBytes(MatlabElements& elements, std::uint64_t end) : m_elements(elements), m_end(end) {}

    std::size_t Read(std::span<std::byte> destination) override {
        const auto wanted =
            std::min<std::uint64_t>(destination.size(), m_end - m_elements.Position());
        return m_elements.Read(destination.first(static_cast<std::size_t>(wanted)));
    }

 private:
    MatlabElements& m_elements;
    std::uint64_t m_end;
};

class Level5Check {
 public:
    Level5Check(const InputFile& file, std::uint64_t fileBytes, bool isBigEndian)
        : m_name(file.name),
          m_fileBytes(fileBytes),
          m_isBigEndian(isBigEndian),
          m_stream(file.files.OpenToRead(file.name)) {}

    void Run() {
        MatlabElements elements(m_name + ", byte ", *m_stream, m_isBigEndian);
        elements.SkipTo(Level5HeaderBytes);
        while (elements.Position() < m_fileBytes) {
            const MatlabTag tag = elements.Next(m_fileBytes);
            const std::uint64_t end = elements.Position() + tag.bytes;
            if (tag.kind == PackedElement) {
                CheckPacked(elements, tag.bytes);
            } else if (tag.kind == ArrayElement) {
                CheckArray(elements, end, 0);
            }
            elements.SkipTo(end);
        }
    }

 private:
    // Unpacks the variable to its end, so that there is as much as it says.
    void CheckPacked(MatlabElements& elements, std::uint64_t bytes) {
        const std::string place = m_name + ", byte " + std::to_string(elements.Position());
        const auto unpacked =
            Inflated(place, std::make_unique<PackedBytes>(elements, elements.Position() + bytes),
                     Packing::Zlib);
        MatlabElements inner(place + ", unpacked byte ", *unpacked, m_isBigEndian);
        const MatlabTag tag = inner.Next(LargestRatio * bytes);
        const std::uint64_t end = inner.Position() + tag.bytes;
        if (tag.kind != ArrayElement) {
            throw inner.Fault("A packed variable should be an array.");
        }
        CheckArray(inner, end, 0);
        inner.SkipTo(end);
    }

    // From behind the array's tag on.
    void CheckArray(MatlabElements& elements, std::uint64_t end, int depth) {
        if (elements.Position() == end) {
            return;
        }
        const std::uint32_t flags = TakeFlags(elements, end);
        const std::uint32_t kind = flags & 0xFFU;
        if (kind == OpaqueArray) {
            return;
        }
        const std::uint64_t count = TakeDimensions(elements, end);
        elements.Skip(elements.Next(end), end);
        if (kind == StructureArray) {
            CheckMembers(elements, end, Product(count, TakeFieldNames(elements, end)), depth);
        } else if (kind == CellArray || kind == FunctionArray) {
            CheckMembers(elements, end, count, depth);
        } else if (kind == LetterArray || (kind >= DoubleArray && kind <= UInt64Array)) {
            CheckValues(elements, end, count, (flags & ComplexFlag) != 0 ? 2 : 1);
        } else {
            CheckPlain(elements, end);
        }
    }

    static std::uint32_t TakeFlags(MatlabElements& elements, std::uint64_t end) {
        const MatlabTag tag = elements.Next(end);
        if (tag.kind != UInt32Element || tag.bytes != 8) {
            throw elements.Fault("This is not the head of an array.");
        }
        const std::uint32_t flags = elements.Word();
        static_cast<void>(elements.Word());
        return flags;
    }

    // Returns how many members or values the array has.
    static std::uint64_t TakeDimensions(MatlabElements& elements, std::uint64_t end) {
        const MatlabTag tag = elements.Next(end);
        const std::uint64_t dimensions = tag.bytes / 4;
        if (tag.kind != Int32Element || dimensions < 2 || dimensions > MostDimensions) {
            throw elements.Fault("An array should have from 2 to 32 dimensions.");
        }
        const std::uint64_t after = elements.EndOf(tag, end);
        std::uint64_t count = 1;
        for (std::uint64_t k = 0; k < dimensions; ++k) {
            count = Product(count, elements.Word());
        }
        elements.SkipTo(after);
        return count;
    }

    // Returns how many fields the structure has.
    static std::uint64_t TakeFieldNames(MatlabElements& elements, std::uint64_t end) {
        const MatlabTag length = elements.Next(end);
        if (length.kind != Int32Element || !length.isSmall || length.word == 0) {
            throw elements.Fault("This is not the length of a field's name.");
        }
        const MatlabTag names = elements.Next(end);
        elements.Skip(names, end);
        return names.bytes / length.word;
    }

    void CheckMembers(MatlabElements& elements, std::uint64_t end, std::uint64_t count, int depth) {
        if (count > (end - elements.Position()) / 8) {
            throw elements.Fault("There is no room for " + std::to_string(count) + " members.");
        }
        if (depth == MostMatlabDepth || count > MostMatlabMembers - m_members) {
            throw elements.Fault(
                "Its structures and cells have too many members, or lie too deep in one another. "
                "Save the waveform alone.");
        }
        m_members += static_cast<std::size_t>(count);
        for (std::uint64_t k = 0; k < count; ++k) {
            const MatlabTag tag = elements.Next(end);
            if (tag.kind != ArrayElement) {
                throw elements.Fault("A member should be an array.");
            }
            const std::uint64_t memberEnd = elements.Position() + tag.bytes;
            CheckArray(elements, memberEnd, depth + 1);
            elements.SkipTo(memberEnd);
        }
    }

    // Values may be kept in fewer bytes than they have in memory, but each is kept.
    static void CheckValues(MatlabElements& elements, std::uint64_t end, std::uint64_t count,
                            int parts) {
        for (int part = 0; part < parts && count > 0; ++part) {
            const MatlabTag tag = elements.Next(end);
            const std::uint64_t bytes = ValueBytesOf(tag.kind);
            if (bytes == 0 || tag.bytes / bytes < count) {
                throw elements.Fault("There are no " + std::to_string(count) +
                                     " values in an element of " + std::to_string(tag.bytes) +
                                     " bytes.");
            }
            elements.Skip(tag, end);
        }
    }

    // Sparse arrays and objects: elements one behind another.
    static void CheckPlain(MatlabElements& elements, std::uint64_t end) {
        while (elements.Position() < end) {
            elements.Skip(elements.Next(end), end);
        }
    }

    static std::uint64_t Product(std::uint64_t a, std::uint64_t b) {
        constexpr std::uint64_t Most = std::numeric_limits<std::uint64_t>::max();
        return b != 0 && a > Most / b ? Most : a * b;
    }

    std::string m_name;
    std::uint64_t m_fileBytes;
    bool m_isBigEndian;
    std::unique_ptr<ByteStream> m_stream;
    std::size_t m_members = 0;
};

}  // namespace

void CheckMatlabLevel5(const InputFile& file, std::uint64_t fileBytes, bool isBigEndian) {
    Level5Check(file, fileBytes, isBigEndian).Run();
}

}  // namespace krv::formats
