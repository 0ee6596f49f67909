#include "formats/NumpyArray.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>

#include "formats/Counted.h"
#include "formats/Fault.h"

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

constexpr std::uint32_t MostHeaderBytes = 65536;
// More rows than this are frames, not channels.
constexpr std::uint64_t MostChannels = 64;
// Far more than any file has; products with it stay within 64 bits.
constexpr std::uint64_t MostFrames = std::uint64_t{1} << 48U;

// What stands behind a key of the header's dictionary, without blanks in front.
std::string_view ValueOf(std::string_view header, std::string_view key) {
    const std::size_t at = header.find(key);
    if (at == std::string_view::npos) {
        return {};
    }
    header.remove_prefix(at + key.size());
    const std::size_t value = header.find_first_not_of(" :'\"");
    return value == std::string_view::npos ? std::string_view() : header.substr(value);
}

std::optional<SampleLayout> LayoutOfDescr(std::string_view descr) {
    descr = descr.substr(0, descr.find_first_of("'\""));
    if (descr.size() != 3 && descr != "<c16"sv && descr != ">c16"sv) {
        return std::nullopt;
    }
    SampleLayout layout;
    layout.isComplex = descr[1] == 'c';
    layout.type.isBigEndian = descr[0] == '>';
    const bool isFloat = descr[1] == 'f' || layout.isComplex;
    layout.type.kind = isFloat           ? SampleKind::Float
                       : descr[1] == 'u' ? SampleKind::Unsigned
                                         : SampleKind::Signed;
    const int bytes = descr == "<c16"sv || descr == ">c16"sv ? 16 : descr[2] - '0';
    layout.type.bytes = static_cast<std::uint8_t>(layout.isComplex ? bytes / 2 : bytes);
    const bool isKnownKind = "iufcb"sv.find(descr[1]) != std::string_view::npos;
    const bool isKnownSize = isFloat ? layout.type.bytes == 4 || layout.type.bytes == 8
                                     : bytes == 1 || bytes == 2 || bytes == 4 || bytes == 8;
    return isKnownKind && isKnownSize ? std::optional(layout) : std::nullopt;
}

// The numbers of "(1000, 2)"; nothing for anything else.
std::optional<std::vector<std::uint64_t>> Dimensions(std::string_view shape) {
    if (!shape.starts_with('(')) {
        return std::nullopt;
    }
    shape = shape.substr(1, shape.find(')') - 1);
    std::vector<std::uint64_t> dimensions;
    while (!shape.empty()) {
        std::uint64_t dimension = 0;
        const auto [end, error] =
            std::from_chars(shape.data(), shape.data() + shape.size(), dimension);
        if (error != std::errc() || dimension > MostFrames) {
            return std::nullopt;
        }
        dimensions.push_back(dimension);
        shape.remove_prefix(static_cast<std::size_t>(end - shape.data()));
        shape.remove_prefix(std::min(shape.find_first_not_of(" ,L"), shape.size()));
    }
    return dimensions;
}

std::string ReadHeaderText(const std::string& file, ByteStream& stream,
                           std::uint64_t& headerBytes) {
    std::array<std::byte, 12> start{};
    const std::span<std::byte> bytes(start);
    if (stream.Read(bytes.first(10)) < 10 || !TextOf(bytes).starts_with("\x93NUMPY"sv)) {
        throw ByteFault(file, 0, "This is not the header of an array.");
    }
    const bool isLong = std::to_integer<int>(start[6]) > 1;
    if (isLong && stream.Read(bytes.subspan(10)) < 2) {
        throw ByteFault(file, 8, "The array's header is cut.");
    }
    const std::uint32_t length = isLong ? LoadAs<std::uint32_t>(bytes.subspan(8), false)
                                        : LoadAs<std::uint16_t>(bytes.subspan(8), false);
    headerBytes = (isLong ? 12U : 10U) + std::uint64_t{length};
    std::string text(std::min(length, MostHeaderBytes), '\0');
    if (length > MostHeaderBytes ||
        stream.Read(std::as_writable_bytes(std::span(text))) < text.size()) {
        throw ByteFault(file, 8, "The array's header is cut or too long.");
    }
    return text;
}

// Which dimension counts the frames: the longer one, but a table may be as short as it likes.
void PlaceDimensions(NumpyArray& array, const std::vector<std::uint64_t>& dimensions,
                     bool isFortran) {
    const std::uint64_t rows = dimensions[0];
    const std::uint64_t columns = dimensions.size() > 1 ? dimensions[1] : 1;
    const bool isTransposed = columns > rows && rows > 0 && rows <= MostChannels;
    array.frames = isTransposed ? columns : rows;
    array.channels = static_cast<std::size_t>(isTransposed ? rows : columns);
    array.isPlanar = array.channels > 1 && isTransposed != isFortran;
}

}  // namespace

NumpyArray ReadNumpyHeader(const std::string& file, ByteStream& stream) {
    NumpyArray array;
    const std::string header = ReadHeaderText(file, stream, array.headerBytes);
    const auto layout = LayoutOfDescr(ValueOf(header, "'descr'"));
    if (!layout) {
        throw FileFault(file, "It holds no array of numbers of a known type.");
    }
    array.layout = *layout;
    const auto dimensions = Dimensions(ValueOf(header, "'shape'"));
    if (!dimensions || dimensions->empty() || dimensions->size() > 2) {
        throw FileFault(file,
                        "The array has not one or two dimensions: save it as points by channels.");
    }
    PlaceDimensions(array, *dimensions, ValueOf(header, "'fortran_order'").starts_with("True"));
    if (array.frames == 0 || array.channels == 0 || array.channels > MostChannels) {
        throw FileFault(file, "An array of " + Counted(array.frames, "point") + " in " +
                                  Counted(array.channels, "channel") + " can't be read.");
    }
    return array;
}

std::vector<SampleStream> StreamsOf(const NumpyArray& array,
                                    const std::function<std::unique_ptr<ByteStream>()>& open) {
    const std::size_t width = array.layout.isComplex ? 2 : 1;
    std::vector<SampleStream> streams;
    if (!array.isPlanar) {
        streams.push_back({PieceOf(open(), array.headerBytes, array.ValueBytes()),
                           array.layout.type, array.channels * width});
        return streams;
    }
    const std::uint64_t channelBytes = array.frames * array.FrameBytes();
    for (std::size_t channel = 0; channel < array.channels; ++channel) {
        streams.push_back(
            {PieceOf(open(), array.headerBytes + channel * channelBytes, channelBytes),
             array.layout.type, width});
    }
    return streams;
}

}  // namespace krv::formats
