// Files to write whose names lead to links, folders and pipes.
#include <sys/stat.h>

#include <filesystem>
#include <thread>

#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

class SpecialFilesTest : public CommandLineTest {
 protected:
    SpecialFilesTest() { std::filesystem::create_directory(Path("out")); }

    void Link(const std::string& name) {
        File("kept", "kept");
        std::filesystem::create_symlink(Path("kept"), Path(name));
    }
    void ExpectRefusal(const std::string& name) {
        EXPECT_NE(Err.find(Path(name) + ": What has this name is not a regular file."),
                  std::string::npos)
            << Err;
        EXPECT_TRUE(std::filesystem::is_symlink(Path(name)));
        EXPECT_EQ(Content("kept"), "kept");
    }
    int Convert() {
        return Run({"convert", "--model", "M771XB", "--output", Path("out"), "--i", m_data});
    }
    int Import() { return Run({"import", m_data, "--output", Path("out")}); }
    int Identify() { return Run({"identify", "--address", "sim://M7718C", "--log", Path("log")}); }

 private:
    std::string m_data = File("data.txt", Ramp(16));
};

TEST_F(SpecialFilesTest, AreKeptByEveryCommand) {
    Link("out/dataI.txt");
    EXPECT_EQ(Import(), 1);
    ExpectRefusal("out/dataI.txt");
    Link("out/q.int16");
    EXPECT_EQ(Convert(), 1);
    ExpectRefusal("out/q.int16");
    Link("log");
    EXPECT_EQ(Identify(), 1);
    ExpectRefusal("log");

    std::filesystem::remove(Path("out/q.int16"));
    std::filesystem::create_directory(Path("out/q.int16"));
    EXPECT_EQ(Convert(), 1);
    EXPECT_TRUE(Exists("out/q.int16"));
}

TEST_F(SpecialFilesTest, PipesAreWrittenTo) {
    ASSERT_EQ(mkfifo(Path("out/dataI.txt").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = Content("out/dataI.txt"); });
    EXPECT_EQ(Import(), 0) << Err;
    reader.join();
    EXPECT_EQ(read, Ramp(16));
    EXPECT_TRUE(std::filesystem::is_fifo(Path("out/dataI.txt")));
    ASSERT_EQ(mkfifo(Path("log").c_str(), 0600), 0);
    EXPECT_EQ(Identify(), 1);
    EXPECT_NE(Err.find("No program reads from this pipe."), std::string::npos) << Err;
}

TEST_F(SpecialFilesTest, TheConfigurationMayBeALink) {
    using std::filesystem::perms;
    Link("config");
    const std::string kept = File("kept", "# mine\n");
    const perms mine = perms::owner_read | perms::owner_write;
    std::filesystem::permissions(kept, mine);
    Surroundings.configFile = Path("config");
    ASSERT_EQ(Run({"config", "set", "visa", "./library.so"}), 0) << Err;
    EXPECT_TRUE(std::filesystem::is_symlink(Path("config")));
    const auto library = std::filesystem::current_path() / "library.so";
    EXPECT_EQ(Content("kept"), "# mine\nvisa = " + library.string() + '\n');
    EXPECT_EQ(std::filesystem::status(kept).permissions(), mine);
}

}  // namespace
}  // namespace krv::tests
