#include "plots/PngFile.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "common/Crc32.h"

namespace krv::plots {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t StoredBlockBytes = 65535;
constexpr std::size_t MostHalfByteColors = 16;

std::string HighByteFirst(std::uint32_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> static_cast<unsigned>(shift) & 0xFFU);
    }
    return bytes;
}

std::string PngChunk(const std::string& kindAndContent) {
    Crc32 sum;
    sum.Add(std::as_bytes(std::span(kindAndContent)));
    return HighByteFirst(static_cast<std::uint32_t>(kindAndContent.size() - 4)) + kindAndContent +
           HighByteFirst(sum.Value());
}

// Each row begins with the number of its filter, which is none. Up to 16 colours take half a byte.
std::string PngRows(const suite::picture::Picture& picture,
                    const suite::picture::IndexedPicture& indexed) {
    const bool isHalf = indexed.colors.size() <= MostHalfByteColors;
    const std::uint8_t* index = indexed.indices.data();
    std::string rows;
    for (int y = 0; y < picture.height; ++y) {
        rows += '\0';
        for (int x = 0; x < picture.width; x += isHalf ? 2 : 1) {
            unsigned byte = *index++;
            if (isHalf) {
                byte = byte << 4U | (x + 1 < picture.width ? *index++ : 0U);
            }
            rows += static_cast<char>(byte);
        }
    }
    return rows;
}

std::string PngPalette(const suite::picture::IndexedPicture& indexed) {
    std::string palette = "PLTE";
    for (const suite::picture::Color& color : indexed.colors) {
        palette += static_cast<char>(color.red);
        palette += static_cast<char>(color.green);
        palette += static_cast<char>(color.blue);
    }
    return palette;
}

std::uint32_t Adler32(std::string_view text) {
    constexpr std::uint32_t Base = 65521;
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char character : text) {
        low = (low + static_cast<unsigned char>(character)) % Base;
        high = (high + low) % Base;
    }
    return high << 16U | low;
}

// As a stream of zlib in blocks that are stored as they are.
std::string Stored(std::string_view rows) {
    std::string stream = "\x78\x01";
    for (std::size_t at = 0; at < rows.size(); at += StoredBlockBytes) {
        const std::string_view block = rows.substr(at, StoredBlockBytes);
        const auto size = static_cast<std::uint16_t>(block.size());
        const auto inverse = static_cast<std::uint16_t>(~size);
        stream += at + block.size() == rows.size() ? '\1' : '\0';
        for (const std::uint16_t number : {size, inverse}) {
            stream += static_cast<char>(number & 0xFFU);
            stream += static_cast<char>(number >> 8U);
        }
        stream += block;
    }
    return stream + HighByteFirst(Adler32(rows));
}

}  // namespace

std::string EncodePngFile(const suite::picture::Picture& picture) {
    const suite::picture::IndexedPicture indexed = suite::picture::ToIndexed(picture);
    const char bits = indexed.colors.size() <= MostHalfByteColors ? 4 : 8;
    // Indices into a table of colours; no interlacing.
    const std::string header = "IHDR" + HighByteFirst(static_cast<std::uint32_t>(picture.width)) +
                               HighByteFirst(static_cast<std::uint32_t>(picture.height)) + bits +
                               std::string("\x03\0\0\0"sv);
    return "\x89PNG\r\n\x1A\n" + PngChunk(header) + PngChunk(PngPalette(indexed)) +
           PngChunk("IDAT" + Stored(PngRows(picture, indexed))) + PngChunk("IEND");
}

}  // namespace krv::plots
