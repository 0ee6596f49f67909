#include "suite/picture/Metafiles.h"

#include "suite/picture/BitmapFile.h"
#include "suite/picture/Bytes.h"

namespace krv::suite::picture {
namespace {

constexpr int PixelsPerInch = 96;
constexpr std::uint32_t SourceCopy = 0x00CC0020;

// --- the old kind: records of 16-bit words, in units of one pixel
// -------------------------------------------------------

constexpr std::size_t WordsOfHeader = 9;

namespace MetaRecord {
constexpr std::uint16_t End = 0x0000;
constexpr std::uint16_t SetMapMode = 0x0103;
constexpr std::uint16_t SetWindowOrigin = 0x020B;
constexpr std::uint16_t SetWindowExtent = 0x020C;
constexpr std::uint16_t StretchDib = 0x0F43;
}  // namespace MetaRecord

std::string Record(std::uint16_t function, const std::string& parameters) {
    std::string record;
    Put32(record, (6 + parameters.size()) / 2);
    Put16(record, function);
    return record + parameters;
}

std::string Words(std::initializer_list<int> values) {
    std::string words;
    for (const int value : values) {
        Put16(words, value);
    }
    return words;
}

std::string StretchRecord(const Picture& picture) {
    const DeviceIndependentBitmap dib = EncodeDib(picture);
    std::string parameters;
    Put32(parameters, SourceCopy);
    parameters +=
        Words({0, picture.height, picture.width, 0, 0, picture.height, picture.width, 0, 0});
    return Record(MetaRecord::StretchDib, parameters + dib.information + dib.bits);
}

std::string PlaceableHeader(const Picture& picture) {
    std::string header;
    Put32(header, 0x9AC6CDD7U);
    header += Words({0, 0, 0, picture.width, picture.height, PixelsPerInch, 0, 0});
    std::uint16_t checksum = 0;
    for (std::size_t offset = 0; offset < header.size(); offset += 2) {
        checksum = static_cast<std::uint16_t>(checksum ^ NumberAt<std::uint16_t>(header, offset));
    }
    Put16(header, checksum);
    return header;
}

// --- the enhanced kind: records of 32-bit numbers ------------------------------------------------

// A device of 10 inches in whole millimetres, so that nothing is rounded.
constexpr std::uint32_t DevicePixels = 960;
constexpr std::uint32_t DeviceMillimetres = 254;

namespace EnhancedRecord {
constexpr std::uint32_t Header = 1;
constexpr std::uint32_t End = 14;
constexpr std::uint32_t StretchDibits = 81;
constexpr std::uint32_t HeaderSize = 108;
constexpr std::uint32_t StretchSize = 80;
constexpr std::uint32_t EndSize = 20;
}  // namespace EnhancedRecord

std::string Longs(std::initializer_list<std::uint32_t> values) {
    std::string longs;
    for (const std::uint32_t value : values) {
        Put32(longs, value);
    }
    return longs;
}

// 2540 hundredths of a millimetre are an inch.
std::uint32_t FrameEnd(std::uint32_t pixels) {
    return (pixels * 2540 + PixelsPerInch / 2) / PixelsPerInch;
}

std::string EnhancedHeader(std::uint32_t width, std::uint32_t height, std::size_t fileSize) {
    using namespace EnhancedRecord;
    return Longs({Header, HeaderSize, 0, 0, width - 1, height - 1, 0, 0, FrameEnd(width),
                  FrameEnd(height), 0x464D4520U, 0x00010000U,
                  static_cast<std::uint32_t>(fileSize)}) +
           // Three records, one handle, no description, no palette.
           Longs({3, 1, 0, 0, 0, DevicePixels, DevicePixels, DeviceMillimetres, DeviceMillimetres,
                  0, 0, 0, DeviceMillimetres * 1000, DeviceMillimetres * 1000});
}

}  // namespace

std::string EncodePlaceableMetafile(const Picture& picture) {
    const std::string stretch = StretchRecord(picture);
    const std::string records =
        Record(MetaRecord::SetMapMode, Words({8})) +
        Record(MetaRecord::SetWindowOrigin, Words({0, 0})) +
        Record(MetaRecord::SetWindowExtent, Words({picture.height, picture.width})) + stretch +
        Record(MetaRecord::End, {});
    std::string file = PlaceableHeader(picture);
    file += Words({1, WordsOfHeader, 0x0300});
    Put32(file, WordsOfHeader + records.size() / 2);
    Put16(file, 0);
    Put32(file, stretch.size() / 2);
    Put16(file, 0);
    return file + records;
}

std::string EncodeEnhancedMetafile(const Picture& picture) {
    using namespace EnhancedRecord;
    const DeviceIndependentBitmap dib = EncodeDib(picture);
    const auto width = static_cast<std::uint32_t>(picture.width);
    const auto height = static_cast<std::uint32_t>(picture.height);
    const auto information = static_cast<std::uint32_t>(dib.information.size());
    const auto bits = static_cast<std::uint32_t>(dib.bits.size());
    const std::uint32_t stretchSize = StretchSize + information + bits;
    const std::string stretch =
        Longs({StretchDibits, stretchSize, 0,           0,           width - 1,
               height - 1,    0,           0,           0,           0,
               width,         height,      StretchSize, information, StretchSize + information,
               bits,          0,           SourceCopy,  width,       height});
    return EnhancedHeader(width, height, HeaderSize + stretchSize + EndSize) + stretch +
           dib.information + dib.bits + Longs({End, EndSize, 0, 16, EndSize});
}

}  // namespace krv::suite::picture
