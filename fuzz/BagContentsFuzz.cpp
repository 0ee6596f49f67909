// The reader of a property bag's contents. The first byte of an input says whether the rest is
// taken as it is, or as what lies between header and checksum, which then are right. What is read
// must be written to the same bytes.
#include <string>
#include <vector>

#include "common/BagContents.h"
#include "common/Error.h"
#include "fuzz/FuzzTarget.h"
#include "tests/support/SealedBag.h"

namespace krv::fuzz {
namespace {

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
    const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    krv::fuzz::ReadAndWriteBack(
        krv::tests::BytesOf((data[0] & 1U) != 0 ? krv::tests::SealedBag(rest) : rest));
    return 0;
}
