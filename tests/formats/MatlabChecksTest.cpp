// MATLAB files that say more than they hold: they are refused before memory is taken for them.
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "common/files/StandardFiles.h"
#include "formats/Inflate.h"
#include "formats/Readers.h"
#include "tests/formats/FormatsFixture.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

using namespace std::string_literals;

constexpr std::uint64_t Billion = std::uint64_t{1} << 30U;

class MatlabChecksTest : public FormatsFixture {
 protected:
    void SetUp() override {
        if (formats::MissingToReadMatlab() != nullptr) {
            GTEST_SKIP() << formats::MissingToReadMatlab();
        }
    }

    static std::string Element(unsigned kind, const std::string& content) {
        return Low(kind, 4) + Low(content.size(), 4) + content +
               std::string((8 - content.size() % 8) % 8, '\0');
    }
    static std::string Array(unsigned flags, std::initializer_list<std::uint64_t> dimensions,
                             const std::string& content, const std::string& name = "x") {
        std::string sizes;
        for (const std::uint64_t each : dimensions) {
            sizes += Low(each, 4);
        }
        return Element(14,
                       Element(6, Low(flags, 8)) + Element(5, sizes) + Element(1, name) + content);
    }
    static std::string Level5(const std::string& elements) {
        return std::string(124, ' ') + "\0\1IM"s + elements;
    }
    static std::string Level4(std::uint64_t rows, std::uint64_t columns) {
        return Low(30, 4) + Low(rows, 4) + Low(columns, 4) + Low(0, 4) + Low(2, 4) + "x\0"s;
    }
    // A stream of zlib with stored bytes and no checksum.
    static std::string Packed(const std::string& bytes, std::uint64_t size) {
        const std::string content = "\x78\x01\x01"s + Low(size, 2) + Low(~size, 2) + bytes;
        return Low(15, 4) + Low(content.size(), 4) + content;
    }
};

TEST_F(MatlabChecksTest, ArraysMustBeInTheFile) {
    const std::string names = Low(4U << 16U | 5U, 4) + Low(2, 4) + Element(1, "a\0b\0"s);
    const std::string two = Element(9, std::string(16, '\0'));
    const std::string deep = [&] {
        std::string array = Array(6, {1, 2}, two);
        for (int depth = 0; depth < 40; ++depth) {
            array = Array(1, {1, 1}, array);
        }
        return array;
    }();
    const std::string array = Array(6, {1, 2}, two);
    const std::pair<std::string, const char*> cases[] = {
        {Level5(Array(6, {Billion, 2}, two)),
         "a, byte 192: There are no 2147483648 values in an element of 16 bytes."},
        {Level5(Array(6 | 0x800, {1, 2}, two)), "a, byte 208: An element is missing."},
        {Level5(Array(2, {Billion, 1}, names)),
         "a, byte 208: There is no room for 2147483648 members."},
        {Level5(Array(1, {Billion, Billion, Billion}, "")),
         "a, byte 192: There is no room for 18446744073709551615 members."},
        {Level5(Array(2, {1, 1}, Low(4U << 16U | 5U, 4) + Low(0, 4) + Element(1, "a"))),
         "a, byte 192: This is not the length of a field's name."},
        {Level5(Array(1, {1, 1}, Array(7, {3, 1}, two))),
         "a, byte 248: There are no 3 values in an element of 16 bytes."},
        {Level5(deep),
         "a, byte 1976: Its structures and cells have too many members, or lie too deep in one "
         "another. Save the waveform alone."},
        {Level5(Array(1, {5000, 1}, std::string(40000, '\0'))),
         "a, byte 184: Its structures and cells have too many members, or lie too deep in one "
         "another. Save the waveform alone."},
        {Level5(array.substr(0, 4) + Low(Billion, 4) + array.substr(8)),
         "a, byte 136: An element of 1073741824 bytes doesn't fit into the 72 that are left."},
        {Level4(2, Billion),
         "a, byte 0: An array of 2 by 1073741824 values doesn't fit into the 2 bytes behind its "
         "head."},
        {Level4(1, 1) + "ab" + Level4(3, 1).substr(0, 10),
         "a, byte 24: This is not the head of an array."},
    };
    for (const auto& [content, error] : cases) {
        EXPECT_EQ(Points("a", content), error);
    }
}

TEST_F(MatlabChecksTest, PackedArraysMustUnpackToWhatTheySay) {
    if (formats::MissingToInflate() != nullptr) {
        GTEST_SKIP() << formats::MissingToInflate();
    }
    const std::string array = Array(6, {1, 2}, Element(9, std::string(16, '\0')));
    EXPECT_EQ(Points("a", Level5(Packed(array.substr(0, 60), 1000))),
              "a, byte 136: The compressed data is cut.");
    EXPECT_EQ(Points("a", Level5(Packed(array.substr(0, 4) + Low(Billion, 4), 8))),
              "a, byte 136, unpacked byte 8: An element of 1073741824 bytes doesn't fit into the "
              "15472 that are left.");
    EXPECT_EQ(Points("a", Level5(Packed(Array(1, {Billion, 1}, ""), 56))),
              "a, byte 136, unpacked byte 56: There is no room for 1073741824 members.");
}

TEST_F(MatlabChecksTest, StructuresAreReadAndTheRestIsTold) {
    const std::string name = Low(4U << 16U | 5U, 4) + Low(2, 4) + Element(1, "s\0"s);
    const std::string values =
        Element(9, Low(0x3FF0000000000000U, 8) + Low(0x4000000000000000U, 8));
    const std::string array = Array(6, {2, 1}, values, "");
    const std::string inner = Array(2, {1, 1}, name + array, "");
    EXPECT_EQ(Points("a", Level5(Array(2, {1, 1}, name + inner))), "1 | 2");
    const std::string none = "a: It holds no array of numbers with two values or more.";
    EXPECT_EQ(Points("a", Level5(Array(1, {1, 1}, array))),
              none + " Left out: 'x', which is a cell array. Save what is in it as variables.");
    EXPECT_EQ(Points("a", Level5(Array(2, {2, 1}, name + array + array))),
              none +
                  " Left out: 'x', which is an array of structures. Save the arrays in it as "
                  "variables.");
    EXPECT_EQ(Points("a", Level5(Array(4, {1, 2}, Element(4, Low(65, 2) + Low(66, 2))))), none);
}

// The sizes of a sample's array, changed wherever the file has them.
TEST_F(MatlabChecksTest, DatasetsMustBeInTheFile) {
    const TemporaryFolder folder;
    const std::string sample = Sample("matio_v73_complex_single.mat");
    std::string large = sample;
    for (std::size_t at = large.find(Low(1000, 8)); at != std::string::npos;
         at = large.find(Low(1000, 8))) {
        large.replace(at, 8, Low(Billion, 8));
    }
    files::StandardFiles files;
    const auto error = [&](const std::string& content) {
        const std::string file = folder.Write("a.mat", content);
        return CaughtFrom([&] {
                   return formats::Import({files, file}, {}, [] {});
               })
            ->Description()
            .substr(file.size());
    };
    EXPECT_EQ(error(large),
              ", 'iq': It should have 1073741824 values, for which there is no data.");
    EXPECT_EQ(error(sample.substr(0, 4000)),
              ": It can't be read as a MATLAB file: it is cut or damaged.");
}

}  // namespace
}  // namespace krv::tests
