// Files that are left by no way in which the program ends.
#include "common/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <span>
#include <string>

#include "tests/support/EnvironmentVariable.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace krv::tests {
namespace {

TEST(TemporaryFile, GoesWithItsObjectAndBeforeASuddenEnd) {
    const TemporaryFolder folder;
    const EnvironmentVariable temporary("TMPDIR", folder.Path().string());
    {
        const TemporaryFile first;
        const TemporaryFile second;
        first.Write(std::as_bytes(std::span("bytes", 5)));
        EXPECT_EQ(folder.Names().size(), 2U);
        EXPECT_EQ(std::filesystem::file_size(first.Path()), 5U);
    }
    EXPECT_TRUE(folder.Names().empty());
    const TemporaryFile third;
    TemporaryFile::RemoveAll();
    EXPECT_TRUE(folder.Names().empty());
    const EnvironmentVariable nowhere("TMPDIR", "/dev/null");
    EXPECT_EQ(ErrorNumberOf([] { return TemporaryFile().Path(); }), ErrorNumber::PathFileAccess);
}

}  // namespace
}  // namespace krv::tests
