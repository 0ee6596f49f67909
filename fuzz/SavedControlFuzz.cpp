// A control's stream and a document's container with the cells and pictures in it, from anywhere.
// The first byte of an input chooses: 0 a stream, 1 a stream whose contents are given without their
// frame, 2 a container, 3 a container whose table gets the checksum that it should have, 4 the
// pictures in one, 5 pictures without the frame of their entries.
#include <algorithm>
#include <string>
#include <vector>

#include "bench/book/CsvText.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/PictureCoding.h"
#include "bench/shared/XmlText.h"
#include "common/StreamedBag.h"
#include "fuzz/FuzzTarget.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SealedBag.h"

namespace krv::fuzz {
namespace {

using Bytes = std::vector<std::byte>;

// A stream of the header and the contents.
std::string Framed(const std::string& payload) {
    const std::string contents = tests::SealedBag(payload);
    return "KRVCTL\r\n" + tests::NumberBytes(contents.size()) + contents;
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
    const std::string checksum = tests::NumberBytes(tests::ChecksumOf(file.substr(0, end)));
    return file.replace(end, checksum.size(), checksum);
}

// Damage is reported as such.
template <class Work>
void MayRefuse(const Work& work) {
    const std::int32_t error = tests::ErrorNumberOf(work);
    Require(error == 0 || error == ErrorNumber::InvalidFileFormat, "damage is reported as such");
}

void ReadContainer(const std::string& bytes) {
    MayRefuse([&] {
        const bench::DocumentFile file(bytes);
        for (const char* const name : {"kind", "cells", "parts", ""}) {
            MayRefuse([&] {
                const auto section = file.Section(name);
                Require(!section || section->size() <= bytes.size(), "sections lie in the file");
                (void)bench::ReadCsv(section.value_or(""));
                (void)bench::ParseXml(section.value_or(""));
            });
        }
    });
}

void ReadPictures(const std::string& bytes) {
    MayRefuse([&] {
        const bench::PictureLimits limits{1e4, 1e6};
        const auto pictures = bench::DecodePictures(bytes, limits);
        for (const bench::DocumentPicture& picture : pictures) {
            Require(bench::Fits(picture, limits), "pictures keep to the limits");
        }
        const std::string again = bench::EncodePictures(pictures);
        Require(bench::EncodePictures(bench::DecodePictures(again, limits)) == again,
                "what was read can be saved and read again");
    });
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 6) {
        case 0:
            krv::fuzz::ReadStream(krv::tests::BytesOf(text));
            break;
        case 1:
            krv::fuzz::ReadStream(krv::tests::BytesOf(krv::fuzz::Framed(text)));
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
            krv::fuzz::ReadPictures(krv::tests::SealedBag(text));
            break;
    }
    return 0;
}
