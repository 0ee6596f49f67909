#include "suite/picture/BitmapFile.h"

#include <cstdlib>

#include "common/Error.h"
#include "suite/picture/Bytes.h"

namespace krv::suite::picture {
namespace {

constexpr std::size_t FileHeaderSize = 14;
constexpr std::size_t InfoHeaderSize = 40;
// The resolution of screens, 96 pixels an inch.
constexpr std::uint32_t PixelsPerMetre = 3780;
constexpr std::int32_t MaxSide = 32767;

// Rows are filled up to whole groups of four bytes.
std::size_t RowSize(std::size_t width, std::size_t bitsPerPixel) {
    return (width * bitsPerPixel + 31) / 32 * 4;
}

std::string InfoHeader(const Picture& picture, int bitsPerPixel, std::size_t colors,
                       std::size_t bitsSize) {
    std::string header;
    Put32(header, InfoHeaderSize);
    Put32(header, picture.width);
    Put32(header, picture.height);
    Put16(header, 1);
    Put16(header, bitsPerPixel);
    Put32(header, 0);
    Put32(header, bitsSize);
    Put32(header, PixelsPerMetre);
    Put32(header, PixelsPerMetre);
    Put32(header, colors);
    Put32(header, 0);
    return header;
}

void PutColor(std::string& bytes, Color color) {
    bytes += static_cast<char>(color.blue);
    bytes += static_cast<char>(color.green);
    bytes += static_cast<char>(color.red);
}

// The row's indices, two or one a byte.
void PutIndices(std::string& bytes, const std::uint8_t* indices, int width, bool areNibbles) {
    for (int x = 0; x < width; x += areNibbles ? 2 : 1) {
        unsigned value = indices[x];
        if (areNibbles) {
            value = value << 4 | (x + 1 < width ? indices[x + 1] : 0U);
        }
        bytes += static_cast<char>(value);
    }
}

DeviceIndependentBitmap EncodeIndexed(const Picture& picture, const IndexedPicture& indexed) {
    const bool areNibbles = indexed.colors.size() <= 16;
    const auto width = static_cast<std::size_t>(picture.width);
    const std::size_t rowSize = RowSize(width, areNibbles ? 4 : 8);
    DeviceIndependentBitmap dib;
    for (int y = picture.height - 1; y >= 0; --y) {
        const std::size_t end = dib.bits.size() + rowSize;
        PutIndices(dib.bits, indexed.indices.data() + static_cast<std::size_t>(y) * width,
                   picture.width, areNibbles);
        dib.bits.resize(end);
    }
    dib.information =
        InfoHeader(picture, areNibbles ? 4 : 8, indexed.colors.size(), dib.bits.size());
    for (const Color& color : indexed.colors) {
        PutColor(dib.information, color);
        dib.information += '\0';
    }
    return dib;
}

DeviceIndependentBitmap EncodeDirect(const Picture& picture) {
    const std::size_t rowSize = RowSize(static_cast<std::size_t>(picture.width), 24);
    DeviceIndependentBitmap dib;
    for (int y = picture.height - 1; y >= 0; --y) {
        const std::size_t end = dib.bits.size() + rowSize;
        for (int x = 0; x < picture.width; ++x) {
            PutColor(dib.bits, picture.Row(y)[x]);
        }
        dib.bits.resize(end);
    }
    dib.information = InfoHeader(picture, 24, 0, dib.bits.size());
    return dib;
}

[[noreturn]] void Refuse(const std::string& reason) {
    throw Error(ErrorNumber::InvalidFileFormat, "This is not a usable bitmap: " + reason + '.');
}

// What the headers of a bitmap file say, once it is known to fit the file.
struct Layout {
    int width = 0;
    int height = 0;
    bool fromTop = false;
    unsigned bitsPerPixel = 0;
    std::size_t bitsOffset = 0;
    std::vector<Color> colors;
};

void ReadSize(std::string_view bytes, Layout& layout) {
    const auto width = static_cast<std::int32_t>(NumberAt<std::uint32_t>(bytes, 18));
    const auto height = static_cast<std::int32_t>(NumberAt<std::uint32_t>(bytes, 22));
    if (width < 1 || width > MaxSide || height == 0 || height < -MaxSide || height > MaxSide) {
        Refuse("its size is impossible");
    }
    layout.width = width;
    layout.height = std::abs(height);
    layout.fromTop = height < 0;
}

void ReadColors(std::string_view bytes, Layout& layout) {
    if (layout.bitsPerPixel > 8) {
        return;
    }
    const std::size_t most = std::size_t{1} << layout.bitsPerPixel;
    std::size_t count = NumberAt<std::uint32_t>(bytes, 46);
    count = count == 0 ? most : count;
    const std::uint64_t start =
        FileHeaderSize + std::uint64_t{NumberAt<std::uint32_t>(bytes, FileHeaderSize)};
    if (count > most || start + count * 4 > bytes.size()) {
        Refuse("its colours are missing");
    }
    for (std::size_t index = 0; index < count; ++index) {
        const auto* entry = bytes.data() + start + index * 4;
        layout.colors.push_back({static_cast<std::uint8_t>(entry[2]),
                                 static_cast<std::uint8_t>(entry[1]),
                                 static_cast<std::uint8_t>(entry[0])});
    }
}

Layout ReadLayout(std::string_view bytes) {
    if (bytes.size() < FileHeaderSize + InfoHeaderSize || !bytes.starts_with("BM") ||
        NumberAt<std::uint32_t>(bytes, FileHeaderSize) < InfoHeaderSize) {
        Refuse("it doesn't start like one");
    }
    Layout layout;
    ReadSize(bytes, layout);
    layout.bitsPerPixel = NumberAt<std::uint16_t>(bytes, 28);
    const unsigned bits = layout.bitsPerPixel;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 24 && bits != 32) {
        Refuse(std::to_string(bits) + " bits a pixel are not supported");
    }
    if (NumberAt<std::uint32_t>(bytes, 30) != 0) {
        Refuse("it is compressed");
    }
    layout.bitsOffset = NumberAt<std::uint32_t>(bytes, 10);
    const std::uint64_t size =
        std::uint64_t{RowSize(static_cast<std::size_t>(layout.width), bits)} *
        static_cast<std::uint64_t>(layout.height);
    if (std::uint64_t{layout.bitsOffset} + size > bytes.size()) {
        Refuse("it ends in the middle");
    }
    ReadColors(bytes, layout);
    return layout;
}

Color PixelAt(const Layout& layout, const char* row, int x) {
    const auto column = static_cast<std::size_t>(x);
    if (layout.bitsPerPixel > 8) {
        const auto* const pixel = row + column * (layout.bitsPerPixel / 8);
        return {static_cast<std::uint8_t>(pixel[2]), static_cast<std::uint8_t>(pixel[1]),
                static_cast<std::uint8_t>(pixel[0])};
    }
    const std::size_t bit = column * layout.bitsPerPixel;
    const unsigned shift = 8 - layout.bitsPerPixel - static_cast<unsigned>(bit % 8);
    const unsigned mask = (1U << layout.bitsPerPixel) - 1;
    const unsigned index = static_cast<std::uint8_t>(row[bit / 8]) >> shift & mask;
    if (index >= layout.colors.size()) {
        Refuse("a pixel has no colour");
    }
    return layout.colors[index];
}

}  // namespace

DeviceIndependentBitmap EncodeDib(const Picture& picture) {
    const IndexedPicture indexed = ToIndexed(picture);
    for (std::size_t pixel = 0; pixel < picture.pixels.size(); ++pixel) {
        if (indexed.colors[indexed.indices[pixel]] != picture.pixels[pixel]) {
            return EncodeDirect(picture);
        }
    }
    return EncodeIndexed(picture, indexed);
}

std::string EncodeBitmapFile(const Picture& picture) {
    const DeviceIndependentBitmap dib = EncodeDib(picture);
    const std::size_t bitsOffset = FileHeaderSize + dib.information.size();
    std::string file = "BM";
    Put32(file, bitsOffset + dib.bits.size());
    Put32(file, 0);
    Put32(file, bitsOffset);
    return file + dib.information + dib.bits;
}

Picture ParseBitmapFile(std::string_view bytes) {
    const Layout layout = ReadLayout(bytes);
    const std::size_t rowSize =
        RowSize(static_cast<std::size_t>(layout.width), layout.bitsPerPixel);
    Picture picture{layout.width, layout.height, {}};
    picture.pixels.resize(static_cast<std::size_t>(layout.width) *
                          static_cast<std::size_t>(layout.height));
    for (int y = 0; y < layout.height; ++y) {
        const int stored = layout.fromTop ? y : layout.height - 1 - y;
        const char* const row =
            bytes.data() + layout.bitsOffset + static_cast<std::size_t>(stored) * rowSize;
        for (int x = 0; x < layout.width; ++x) {
            picture.Row(y)[x] = PixelAt(layout, row, x);
        }
    }
    return picture;
}

}  // namespace krv::suite::picture
