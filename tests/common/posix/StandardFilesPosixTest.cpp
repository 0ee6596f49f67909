#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "tests/common/StandardFilesFixture.h"

namespace krv::tests {

using namespace files;
namespace {

using StandardFilesPosixTest = StandardFilesFixture;

TEST_F(StandardFilesPosixTest, PipesAndDevicesAreNoFilesAndAreNotWaitedFor) {
    const std::string pipe = Path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {pipe, std::string("/dev/zero")}) {
        EXPECT_FALSE(Files.FileExists(path)) << path;
        EXPECT_EQ(CommonError(path).substr(0, 3), "75 ");
    }
}

TEST_F(StandardFilesPosixTest, AFileThatMayNotBeReadIsError70) {
    const std::string path = Write("secret.txt", "1");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    // The superuser may read everything, so another user tries.
    const bool isSuperuser = geteuid() == 0;
    constexpr uid_t Nobody = 65534;
    if (isSuperuser) {
        ASSERT_EQ(chmod(m_folder.Path().c_str(), 0755), 0);
        ASSERT_EQ(seteuid(Nobody), 0);
    }
    const bool exists = Files.FileExists(path);
    const std::string error = ErrorOf([&] { return Files.OpenToRead(path); });
    if (isSuperuser) {
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_TRUE(exists);
    EXPECT_EQ(error.substr(0, 21), "70 Permission denied:");
}

TEST_F(StandardFilesPosixTest, AFailingDeviceIsError57) {
    // The kernel refuses to read address 0 of a process's memory.
    EXPECT_EQ(ErrorOf([&] { return ReadAll("/proc/self/mem", 16); }).substr(0, 19),
              "57 Device I/O error");
}

}  // namespace
}  // namespace krv::tests
