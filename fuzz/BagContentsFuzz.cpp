// The reader of a property bag's contents. The first byte of an input tells whether the rest is
// taken as it is, or as what lies between header and checksum: that way what a checksum would keep
// out reaches the reader, too. Whatever is read must be written to the same bytes.
#include <algorithm>
#include <string>
#include <vector>

#include "common/BagContents.h"
#include "common/Crc32.h"
#include "common/Error.h"
#include "fuzz/FuzzTarget.h"

namespace krv::fuzz {
namespace {

void AddNumber(std::vector<std::byte>& bytes, std::size_t value) {
    for (int byte = 0; byte < 4; ++byte) {
        bytes.push_back(static_cast<std::byte>(value >> (8 * byte)));
    }
}

std::vector<std::byte> Sealed(std::span<const std::byte> payload) {
    std::vector<std::byte> contents;
    for (const char character : std::string("KRVBAG\r\n")) {
        contents.push_back(static_cast<std::byte>(character));
    }
    AddNumber(contents, 1);
    AddNumber(contents, payload.size());
    contents.insert(contents.end(), payload.begin(), payload.end());
    Crc32 sum;
    sum.Add(contents);
    AddNumber(contents, sum.Value());
    return contents;
}

void ReadAndWriteBack(const std::vector<std::byte>& contents) {
    std::vector<BagEntry> entries;
    try {
        entries = DecodeBag(contents);
    } catch (const Error& error) {
        Require(error.Number() == ErrorNumber::InvalidFileFormat && !error.Description().empty(),
                "a refusal says what is wrong");
        return;
    }
    Require(EncodeBag(entries) == contents, "what was read is written to the same bytes");
}

}  // namespace
}  // namespace krv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::span rest(reinterpret_cast<const std::byte*>(data) + 1, size - 1);
    krv::fuzz::ReadAndWriteBack((data[0] & 1U) != 0
                                    ? krv::fuzz::Sealed(rest)
                                    : std::vector<std::byte>(rest.begin(), rest.end()));
    return 0;
}
