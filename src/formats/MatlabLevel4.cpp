// MATLAB files of level 4: arrays one behind another, each with a head of five numbers and a name.
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "formats/Fault.h"
#include "formats/MatlabChecks.h"
#include "formats/SampleType.h"

namespace krv::formats {
namespace {

struct Level4Head {
    static constexpr std::size_t Bytes = 20;
    std::int32_t type = 0;
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    std::int32_t isComplex = 0;
    std::int32_t nameBytes = 0;

    // The byte order, how a value is kept, and the kind of matrix stand in the type's digits.
    [[nodiscard]] bool IsPossible(bool isBigEndian) const {
        return type / 1000 == (isBigEndian ? 1 : 0) && type >= 0 && type % 1000 <= 52 &&
               type % 10 <= 2 && rows >= 0 && columns >= 0 && isComplex / 2 == 0 &&
               isComplex >= 0 && nameBytes > 0;
    }
    [[nodiscard]] std::uint64_t ValueBytes() const {
        static constexpr std::array<std::uint64_t, 6> Sizes{8, 4, 4, 2, 2, 1};
        return Sizes.at(static_cast<std::size_t>(type % 100 / 10)) *
               static_cast<std::uint64_t>(isComplex + 1);
    }
};

Level4Head ReadHead(ByteStream& stream, bool isBigEndian) {
    std::array<std::byte, Level4Head::Bytes> bytes{};
    static_cast<void>(stream.Read(bytes));
    const auto number = [&](std::size_t at) {
        return LoadAs<std::int32_t>(std::span(bytes).subspan(4 * at), isBigEndian);
    };
    return {number(0), number(1), number(2), number(3), number(4)};
}

}  // namespace

void CheckMatlabLevel4(const InputFile& file, std::uint64_t fileBytes, bool isBigEndian) {
    const auto stream = file.files.OpenToRead(file.name);
    for (std::uint64_t at = 0; at < fileBytes;) {
        const Level4Head head = ReadHead(*stream, isBigEndian);
        if (fileBytes - at < Level4Head::Bytes || !head.IsPossible(isBigEndian)) {
            throw ByteFault(file.name, at, "This is not the head of an array.");
        }
        const std::uint64_t left = fileBytes - at - Level4Head::Bytes;
        const auto nameBytes = static_cast<std::uint64_t>(head.nameBytes);
        const std::uint64_t values =
            static_cast<std::uint64_t>(head.rows) * static_cast<std::uint64_t>(head.columns);
        if (nameBytes > left || values > (left - nameBytes) / head.ValueBytes()) {
            throw ByteFault(file.name, at,
                            "An array of " + std::to_string(head.rows) + " by " +
                                std::to_string(head.columns) + " values doesn't fit into the " +
                                std::to_string(left) + " bytes behind its head.");
        }
        const std::uint64_t body = nameBytes + values * head.ValueBytes();
        static_cast<void>(SkipBytes(*stream, body));
        at += Level4Head::Bytes + body;
    }
}

}  // namespace krv::formats
