// Files that this user may not read, or nobody can.
#include <unistd.h>

#include <filesystem>

#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {

using namespace cli;
namespace {

// Root may read everything: then somebody else does the work.
class AsSomebody {
 public:
    AsSomebody() : m_user(::geteuid()) {
        if (m_user == 0) {
            constexpr uid_t Nobody = 65534;
            EXPECT_EQ(::seteuid(Nobody), 0);
        }
    }
    ~AsSomebody() { EXPECT_EQ(::seteuid(m_user), 0); }
    AsSomebody(const AsSomebody&) = delete;
    AsSomebody& operator=(const AsSomebody&) = delete;

 private:
    uid_t m_user;
};

class UnreadableFileTest : public CommandLineTest {
 protected:
    int Convert(const std::vector<std::string>& options) {
        std::vector<std::string> words{"convert", "--model", "M771XB", "--output", Path("codes")};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
};

TEST_F(UnreadableFileTest, IsNamed) {
    const std::string good = File("good.txt", Ramp(16));
    const std::string secret = File("secret.txt", Ramp(16));
    std::filesystem::permissions(secret, std::filesystem::perms::none);
    const AsSomebody somebody;
    const std::vector<std::vector<std::string>> places{
        {"--i", secret}, {"--i", good, "--q", secret}, {"--i", good, "--marker-file", secret}};
    for (const auto& options : places) {
        EXPECT_EQ(Convert(options), 1);
        EXPECT_NE(Err.find("File (" + secret + ") could not be read.\nPermission denied"),
                  std::string::npos)
            << Err;
        EXPECT_FALSE(Exists("codes"));
    }
}

TEST_F(UnreadableFileTest, MayFailOnTheWay) {
    // A file of this kind can be opened, and its first bytes can't be read.
    if (!std::filesystem::exists("/proc/self/mem")) {
        GTEST_SKIP() << "no such file here";
    }
    EXPECT_EQ(Convert({"--i", "/proc/self/mem"}), 1);
    EXPECT_NE(Err.find("The I-File (/proc/self/mem) could not be read.\nDevice I/O error"),
              std::string::npos)
        << Err;
    EXPECT_FALSE(Exists("codes"));
}

}  // namespace
}  // namespace krv::tests
