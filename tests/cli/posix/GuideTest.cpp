// The user guide, which a browser of the user's shows.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

class GuideTest : public CommandLineTest {
 protected:
    GuideTest() {
        Surroundings.programFolder = Path("my programs/bin");
        Surroundings.configFile = File("config", "nothing = known\n");
        std::filesystem::create_directories(Path("browser"));
        setenv("PATH", Path("browser").c_str(), 1);
    }
    ~GuideTest() override { setenv("PATH", m_path.c_str(), 1); }

    // One that notes what it opens, and ends with the exit code.
    void InstallBrowser(int exitCode) {
        const std::string program =
            File("browser/xdg-open", "#!/bin/sh\nprintf '%s' \"$*\" >\"$0.opened\"\nexit " +
                                         std::to_string(exitCode) + '\n');
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    std::string InstallGuide(const std::string& folder) {
        std::filesystem::create_directories(Path("my programs/" + folder));
        return File("my programs/" + folder + "/index.html", "a page");
    }

 private:
    std::string m_path = std::getenv("PATH");
};

TEST_F(GuideTest, IsFoundByTheProgramAndOpened) {
    InstallBrowser(0);
    // What is installed comes before what is built.
    for (const char* folder : {"help/html", "bin/help", "share/doc/krv/html"}) {
        const std::string page = InstallGuide(folder);
        EXPECT_EQ(Run({"help", "--open"}), 0) << Err;
        EXPECT_EQ(Out, page + '\n');
        EXPECT_EQ(Content("browser/xdg-open.opened"), page);
    }
}

TEST_F(GuideTest, SaysWhatIsMissing) {
    EXPECT_EQ(Run({"help", "--open"}), 1);
    for (const char* folder : {"share/doc/krv/html", "bin/help", "help/html"}) {
        const std::string page = Path("my programs/" + std::string(folder) + "/index.html");
        EXPECT_NE(Err.find("\n" + page), std::string::npos) << Err;
    }
    const std::string page = InstallGuide("bin/help");
    EXPECT_EQ(Run({"help", "--open"}), 1);
    EXPECT_NE(Err.find("No browser could be opened"), std::string::npos) << Err;
    EXPECT_EQ(Out, page + '\n');
    InstallBrowser(3);
    EXPECT_EQ(Run({"help", "--open"}), 1);
    EXPECT_EQ(Run({"help", "download", "--open"}), 2);
}

}  // namespace
}  // namespace krv::tests
