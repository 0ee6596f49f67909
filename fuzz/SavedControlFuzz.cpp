// A control's stream and a document's container with the cells and pictures in it, from anywhere.
// The first byte of an input chooses: 0 a stream, 1 a stream whose contents are given without their
// frame, 2 a container, 3 a container whose table gets the checksum that it should have, 4 the
// pictures in one, 5 pictures without the frame of their entries.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "bench/book/CsvText.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/PictureCoding.h"
#include "common/Crc32.h"
#include "common/Error.h"
#include "common/StreamedBag.h"
#include "fuzz/FuzzTarget.h"

namespace krv::fuzz {
namespace {

using Bytes = std::vector<std::byte>;

template <class Container>
void AddNumber(Container& bytes, std::size_t value) {
    for (int byte = 0; byte < 4; ++byte) {
        bytes.push_back(static_cast<typename Container::value_type>((value >> (8 * byte)) & 0xFF));
    }
}

Bytes BytesOf(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

std::size_t ChecksumOf(std::span<const std::byte> bytes) {
    Crc32 sum;
    sum.Add(bytes);
    return sum.Value();
}

// A property bag's frame with the payload in it.
Bytes ContentsOf(std::span<const std::byte> payload) {
    Bytes contents = BytesOf("KRVBAG\r\n");
    AddNumber(contents, 1);
    AddNumber(contents, payload.size());
    contents.insert(contents.end(), payload.begin(), payload.end());
    AddNumber(contents, ChecksumOf(contents));
    return contents;
}

// A stream of the header and the contents.
Bytes Framed(std::span<const std::byte> payload) {
    const Bytes contents = ContentsOf(payload);
    Bytes stream = BytesOf("KRVCTL\r\n");
    AddNumber(stream, contents.size());
    stream.insert(stream.end(), contents.begin(), contents.end());
    return stream;
}

void ReadStream(const Bytes& stream) {
    std::size_t at = 0;
    const auto bag = ReadStreamedBag([&](std::span<std::byte> target) {
        const std::size_t count = std::min(target.size(), stream.size() - at);
        std::copy_n(stream.begin() + static_cast<std::ptrdiff_t>(at), count, target.begin());
        at += count;
        return count;
    });
    if (bag && !stream.empty()) {
        const Bytes again = EncodeStreamedBag(*bag);
        Require(again.size() == at && std::equal(again.begin(), again.end(), stream.begin()),
                "what was taken out is what would be written");
    }
}

constexpr std::size_t HeadBytes = 16;
constexpr std::size_t EntryBytes = 20;

// The table's checksum where the table itself says that it is.
std::string WithTableChecksum(std::string file) {
    if (file.size() < HeadBytes) {
        return file;
    }
    const std::size_t count = static_cast<unsigned char>(file[12]) & 0x3F;
    const std::size_t end = HeadBytes + count * EntryBytes;
    if (file.size() < end + 4) {
        return file;
    }
    std::string checksum;
    AddNumber(checksum, ChecksumOf(std::as_bytes(std::span(file).first(end))));
    return file.replace(end, checksum.size(), checksum);
}

void ReadContainer(const std::string& bytes) {
    try {
        const bench::DocumentFile file(bytes);
        for (const char* const name : {"kind", "cells", "control", ""}) {
            try {
                const auto section = file.Section(name);
                Require(!section || section->size() <= bytes.size(), "sections lie in the file");
                bench::CsvFormat format;
                (void)bench::ReadCsv(section.value_or(""), format);
            } catch (const Error& error) {
                Require(error.Number() == ErrorNumber::InvalidFileFormat, "damage is told as such");
            }
        }
    } catch (const Error& error) {
        Require(error.Number() == ErrorNumber::InvalidFileFormat, "damage is told as such");
    }
}

std::string TextOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void ReadPictures(const std::string& bytes) {
    try {
        const bench::PictureLimits limits{1e4, 1e6};
        const auto pictures = bench::DecodePictures(bytes, limits);
        for (const bench::DocumentPicture& picture : pictures) {
            Require(bench::Fits(picture, limits), "pictures keep to the limits");
        }
        const std::string again = bench::EncodePictures(pictures);
        Require(bench::EncodePictures(bench::DecodePictures(again, limits)) == again,
                "what was read can be saved and read again");
    } catch (const Error& error) {
        Require(error.Number() == ErrorNumber::InvalidFileFormat, "damage is told as such");
    }
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto rest = std::as_bytes(std::span(data, size)).subspan(1);
    const std::string text(reinterpret_cast<const char*>(rest.data()), rest.size());
    switch (data[0] % 6) {
        case 0:
            krv::fuzz::ReadStream({rest.begin(), rest.end()});
            break;
        case 1:
            krv::fuzz::ReadStream(krv::fuzz::Framed(rest));
            break;
        case 2:
            krv::fuzz::ReadContainer(text);
            break;
        case 3:
            krv::fuzz::ReadContainer(krv::fuzz::WithTableChecksum(text));
            break;
        case 4:
            krv::fuzz::ReadPictures(text);
            break;
        default:
            krv::fuzz::ReadPictures(krv::fuzz::TextOf(krv::fuzz::ContentsOf(rest)));
            break;
    }
    return 0;
}
