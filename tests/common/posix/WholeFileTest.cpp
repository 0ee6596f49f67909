#include "common/WholeFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <stdexcept>
#include <thread>

#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

std::string Write(const std::filesystem::path& target, std::string_view text) {
    return WriteWholeFile(target, std::as_bytes(std::span(text))).message();
}

const std::string Written = std::error_code().message();

TEST(WholeFile, IsThereWholeOrNotAtAll) {
    const TemporaryFolder folder;
    folder.Write("a.part", "the user's own");
    EXPECT_EQ(Write(folder.At("a"), "first"), Written);
    EXPECT_EQ(Write(folder.At("a"), "second"), Written);
    EXPECT_EQ(folder.Content("a"), "second");
    EXPECT_EQ(folder.Content("a.part"), "the user's own");
    EXPECT_EQ(Write(folder.At("none") / "a", "lost"), "No such file or directory");
    EXPECT_EQ(Write("/dev/full", "lost"), "No space left on device");
    EXPECT_EQ(Write("/dev/null", "gone"), Written);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    {
        WholeFile never(folder.At("a"));
        EXPECT_FALSE(never.Prepare(std::span<const std::byte>()));
    }
    EXPECT_THROW(static_cast<void>(WriteWholeFile(folder.At("a"),
                                                  [](std::ostream& file) {
                                                      file << "half";
                                                      throw std::runtime_error("no more");
                                                  })),
                 std::runtime_error);
    EXPECT_EQ(folder.Content("a"), "second");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"a", "a.part"}));
}

TEST(WholeFile, TakesThePlaceOfNothingButARegularFile) {
    const TemporaryFolder folder;
    const std::string refusal = "What has this name is not a regular file.";
    folder.Write("kept", "kept");
    std::filesystem::create_symlink("kept", folder.At("link"));
    std::filesystem::create_symlink("nowhere", folder.At("dangling"));
    std::filesystem::create_directory(folder.At("folder"));
    ASSERT_EQ(mkfifo(folder.At("pipe").c_str(), 0600), 0);
    const std::set<std::string> before = folder.Names();
    for (const auto& [name, reason] : {std::pair{"link", refusal},
                                       {"dangling", refusal},
                                       {"folder", std::string("Is a directory")}}) {
        EXPECT_EQ(Write(folder.At(name), "lost"), reason) << name;
        EXPECT_EQ(RemoveRegularFile(folder.At(name)).message(), reason) << name;
    }
    EXPECT_EQ(RemoveRegularFile(folder.At("pipe")).message(), refusal);
    EXPECT_EQ(RemoveRegularFile(folder.At("none")).message(), Written);
    EXPECT_EQ(folder.Names(), before);
    EXPECT_EQ(folder.Content("kept"), "kept");
    EXPECT_EQ(RemoveRegularFile(folder.At("kept")).message(), Written);
    EXPECT_FALSE(folder.Has("kept"));
}

TEST(WholeFile, WaitsForThePipesReaderButNotForEver) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.At("pipe").c_str(), 0600), 0);
    EXPECT_EQ(Write(folder.At("pipe"), "lost"), "No program reads from this pipe.");
    std::string read;
    std::thread reader([&] { read = folder.Content("pipe"); });
    EXPECT_EQ(Write(folder.At("pipe"), std::string(200'000, 'x')), Written);
    reader.join();
    EXPECT_EQ(read.size(), 200'000U);
}

}  // namespace
}  // namespace krv::tests
