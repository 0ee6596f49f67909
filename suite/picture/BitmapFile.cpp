#include "suite/picture/BitmapFile.h"

#include "suite/picture/Bytes.h"

namespace krv::suite::picture {
namespace {

// The resolution of screens, 96 pixels an inch.
constexpr std::uint32_t PixelsPerMetre = 3780;

std::string InfoHeader(const Picture& picture, int bitsPerPixel, std::size_t colors,
                       std::size_t bitsSize) {
    std::string header;
    Put32(header, BitmapInfoHeaderSize);
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
    const std::size_t rowSize = BitmapRowSize(width, areNibbles ? 4 : 8);
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
    const std::size_t rowSize = BitmapRowSize(static_cast<std::size_t>(picture.width), 24);
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
    const std::size_t bitsOffset = BitmapFileHeaderSize + dib.information.size();
    std::string file = "BM";
    Put32(file, bitsOffset + dib.bits.size());
    Put32(file, 0);
    Put32(file, bitsOffset);
    return file + dib.information + dib.bits;
}

}  // namespace krv::suite::picture
