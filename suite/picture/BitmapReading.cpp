// The reading side of bitmap files, of every kind that generators write.
#include <array>
#include <bit>
#include <cstdlib>
#include <vector>

#include "common/Error.h"
#include "suite/picture/BitmapFile.h"
#include "suite/picture/Bytes.h"

namespace krv::suite::picture {
namespace {

constexpr std::size_t CoreHeaderSize = 12;
constexpr std::int32_t MaxSide = 32767;
// A few run-length codes stand for any number of pixels, so these pictures have a limit of their
// own.
constexpr std::size_t MaxCodedPixels = std::size_t{1} << 24;

enum Compression : std::uint32_t { None = 0, RunLength8 = 1, RunLength4 = 2, Masks = 3 };

[[noreturn]] void Refuse(const std::string& reason) {
    throw Error(ErrorNumber::InvalidFileFormat, "This is not a usable bitmap: " + reason + '.');
}

// What the headers of a bitmap file say, once it is known to fit the file.
struct Layout {
    std::size_t headerSize = 0;
    int width = 0;
    int height = 0;
    bool fromTop = false;
    unsigned bitsPerPixel = 0;
    std::uint32_t compression = Compression::None;
    std::size_t bitsOffset = 0;
    // Of red, green and blue, for more than 8 bits a pixel.
    std::array<std::uint32_t, 3> masks{};
    std::vector<Color> colors;

    [[nodiscard]] bool HasCoreHeader() const { return headerSize == CoreHeaderSize; }
    [[nodiscard]] bool IsCoded() const {
        return compression == Compression::RunLength8 || compression == Compression::RunLength4;
    }
    [[nodiscard]] std::size_t Pixels() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }
};

void ReadSize(std::string_view bytes, Layout& layout) {
    const bool isCore = layout.HasCoreHeader();
    const auto width = isCore ? std::int32_t{NumberAt<std::uint16_t>(bytes, 18)}
                              : static_cast<std::int32_t>(NumberAt<std::uint32_t>(bytes, 18));
    const auto height = isCore ? std::int32_t{NumberAt<std::uint16_t>(bytes, 20)}
                               : static_cast<std::int32_t>(NumberAt<std::uint32_t>(bytes, 22));
    if (width < 1 || width > MaxSide || height == 0 || height < -MaxSide || height > MaxSide) {
        Refuse("its size is impossible");
    }
    layout.width = width;
    layout.height = std::abs(height);
    layout.fromTop = height < 0;
}

void ReadKind(std::string_view bytes, Layout& layout) {
    layout.bitsPerPixel = NumberAt<std::uint16_t>(bytes, layout.HasCoreHeader() ? 24 : 28);
    layout.compression =
        layout.HasCoreHeader() ? Compression::None : NumberAt<std::uint32_t>(bytes, 30);
    const unsigned bits = layout.bitsPerPixel;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32) {
        Refuse(std::to_string(bits) + " bits a pixel are not supported");
    }
    const bool isPossible =
        layout.compression == Compression::None ||
        (layout.compression == Compression::RunLength8 && bits == 8 && !layout.fromTop) ||
        (layout.compression == Compression::RunLength4 && bits == 4 && !layout.fromTop) ||
        (layout.compression == Compression::Masks && (bits == 16 || bits == 32));
    if (!isPossible) {
        Refuse("it is compressed in a way that is not supported");
    }
}

// Behind the shortest header of this kind, or as part of a longer one.
void ReadMasks(std::string_view bytes, Layout& layout) {
    constexpr std::size_t Start = BitmapFileHeaderSize + BitmapInfoHeaderSize;
    if (layout.compression != Compression::Masks) {
        layout.masks = layout.bitsPerPixel == 16
                           ? std::array<std::uint32_t, 3>{0x7C00, 0x03E0, 0x001F}
                           : std::array<std::uint32_t, 3>{0xFF0000, 0x00FF00, 0x0000FF};
        return;
    }
    if (bytes.size() < Start + sizeof layout.masks) {
        Refuse("its colour masks are missing");
    }
    for (std::size_t color = 0; color < layout.masks.size(); ++color) {
        layout.masks[color] = NumberAt<std::uint32_t>(bytes, Start + color * 4);
    }
}

void ReadColors(std::string_view bytes, Layout& layout) {
    if (layout.bitsPerPixel > 8) {
        return;
    }
    const std::size_t entrySize = layout.HasCoreHeader() ? 3 : 4;
    const std::size_t most = std::size_t{1} << layout.bitsPerPixel;
    std::size_t count = layout.HasCoreHeader() ? 0 : NumberAt<std::uint32_t>(bytes, 46);
    count = count == 0 ? most : count;
    const std::uint64_t start = BitmapFileHeaderSize + std::uint64_t{layout.headerSize};
    if (count > most || start + count * entrySize > bytes.size()) {
        Refuse("its colours are missing");
    }
    for (std::size_t index = 0; index < count; ++index) {
        const auto* entry = bytes.data() + start + index * entrySize;
        layout.colors.push_back({static_cast<std::uint8_t>(entry[2]),
                                 static_cast<std::uint8_t>(entry[1]),
                                 static_cast<std::uint8_t>(entry[0])});
    }
}

Layout ReadLayout(std::string_view bytes) {
    Layout layout;
    if (bytes.size() >= BitmapFileHeaderSize + CoreHeaderSize) {
        layout.headerSize = NumberAt<std::uint32_t>(bytes, BitmapFileHeaderSize);
    }
    const bool isLong = bytes.size() >= BitmapFileHeaderSize + BitmapInfoHeaderSize;
    if (!bytes.starts_with("BM") ||
        !(layout.HasCoreHeader() || (isLong && layout.headerSize >= BitmapInfoHeaderSize))) {
        Refuse("it doesn't start like one");
    }
    ReadSize(bytes, layout);
    ReadKind(bytes, layout);
    layout.bitsOffset = NumberAt<std::uint32_t>(bytes, 10);
    const std::uint64_t size =
        layout.IsCoded() ? 0
                         : std::uint64_t{BitmapRowSize(static_cast<std::size_t>(layout.width),
                                                       layout.bitsPerPixel)} *
                               static_cast<std::uint64_t>(layout.height);
    if (std::uint64_t{layout.bitsOffset} + size > bytes.size()) {
        Refuse("it ends in the middle");
    }
    if (layout.IsCoded() && layout.Pixels() > MaxCodedPixels) {
        Refuse("it is too large");
    }
    ReadMasks(bytes, layout);
    ReadColors(bytes, layout);
    return layout;
}

Color ColorAt(const Layout& layout, unsigned index) {
    if (index >= layout.colors.size()) {
        Refuse("a pixel has no colour");
    }
    return layout.colors[index];
}

// The masked bits as one of 0 to 255.
std::uint8_t Channel(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const std::uint64_t most = mask >> shift;
    const std::uint64_t value = (pixel & mask) >> shift;
    return static_cast<std::uint8_t>((value * 255 + most / 2) / most);
}

Color PixelAt(const Layout& layout, std::string_view row, int x) {
    const auto column = static_cast<std::size_t>(x);
    if (layout.bitsPerPixel > 8) {
        std::uint32_t pixel = 0;
        const std::size_t size = layout.bitsPerPixel / 8;
        for (std::size_t byte = 0; byte < size; ++byte) {
            const auto value = static_cast<std::uint8_t>(row[column * size + byte]);
            pixel |= std::uint32_t{value} << (8 * byte);
        }
        return {Channel(pixel, layout.masks[0]), Channel(pixel, layout.masks[1]),
                Channel(pixel, layout.masks[2])};
    }
    const std::size_t bit = column * layout.bitsPerPixel;
    const unsigned shift = 8 - layout.bitsPerPixel - static_cast<unsigned>(bit % 8);
    const unsigned mask = (1U << layout.bitsPerPixel) - 1;
    const unsigned pixels = static_cast<std::uint8_t>(row[bit / 8]);
    return ColorAt(layout, pixels >> shift & mask);
}

void ReadRows(const Layout& layout, std::string_view bits, Picture& picture) {
    const std::size_t rowSize =
        BitmapRowSize(static_cast<std::size_t>(layout.width), layout.bitsPerPixel);
    for (int y = 0; y < layout.height; ++y) {
        const int stored = layout.fromTop ? y : layout.height - 1 - y;
        const std::string_view row =
            bits.substr(static_cast<std::size_t>(stored) * rowSize, rowSize);
        for (int x = 0; x < layout.width; ++x) {
            picture.Row(y)[x] = PixelAt(layout, row, x);
        }
    }
}

// Run-length codes, from the bottom row up: pairs of a count and a colour, and behind a count of 0
// what the second byte says: the row's end, the picture's end, a step, or so many plain indices.
class RunLengthReader {
 public:
    RunLengthReader(const Layout& layout, std::string_view codes, Picture& picture)
        : m_layout(layout), m_codes(codes), m_picture(picture) {}

    void Read() {
        while (!m_isDone) {
            const unsigned count = Take();
            const unsigned value = Take();
            if (count != 0) {
                for (unsigned index = 0; index < count; ++index) {
                    Put(IndexIn(value, index));
                }
            } else {
                Escape(value);
            }
        }
    }

 private:
    void Escape(unsigned code) {
        switch (code) {
            case 0:
                m_x = 0;
                ++m_line;
                break;
            case 1:
                m_isDone = true;
                break;
            case 2:
                m_x += static_cast<int>(Take());
                m_line += static_cast<int>(Take());
                break;
            default:
                PutPlain(code);
        }
        if (m_x > m_layout.width || m_line > m_layout.height) {
            RefuseToLeave();
        }
    }
    [[noreturn]] static void RefuseToLeave() { Refuse("its codes lead out of the picture"); }
    // Filled up to whole groups of two bytes.
    void PutPlain(unsigned count) {
        const std::size_t start = m_at;
        unsigned value = 0;
        for (unsigned index = 0; index < count; ++index) {
            const bool isNewByte = m_layout.bitsPerPixel == 8 || index % 2 == 0;
            value = isNewByte ? Take() : value;
            Put(IndexIn(value, index));
        }
        m_at += (m_at - start) % 2;
    }
    // Of the byte's two indices with 4 bits a pixel, or its only one.
    [[nodiscard]] unsigned IndexIn(unsigned value, unsigned index) const {
        if (m_layout.bitsPerPixel == 8) {
            return value;
        }
        return index % 2 == 0 ? value >> 4 : value & 0xFU;
    }
    unsigned Take() {
        if (m_at >= m_codes.size()) {
            Refuse("it ends in the middle");
        }
        return static_cast<std::uint8_t>(m_codes[m_at++]);
    }
    void Put(unsigned index) {
        if (m_x >= m_layout.width || m_line >= m_layout.height) {
            RefuseToLeave();
        }
        m_picture.Row(m_layout.height - 1 - m_line)[m_x++] = ColorAt(m_layout, index);
    }

    const Layout& m_layout;
    std::string_view m_codes;
    Picture& m_picture;
    std::size_t m_at = 0;
    int m_x = 0;
    int m_line = 0;
    bool m_isDone = false;
};

}  // namespace

Picture ParseBitmapFile(std::string_view bytes) {
    const Layout layout = ReadLayout(bytes);
    Picture picture{layout.width, layout.height, {}};
    // What run-length codes leave out has the first colour.
    picture.pixels.resize(layout.Pixels(), layout.colors.empty() ? Color{} : layout.colors[0]);
    const std::string_view bits = bytes.substr(layout.bitsOffset);
    if (layout.IsCoded()) {
        RunLengthReader(layout, bits, picture).Read();
    } else {
        ReadRows(layout, bits, picture);
    }
    return picture;
}

}  // namespace krv::suite::picture
