#include "hosts/OfficeProcedures.h"

#include <gtest/gtest.h>

#include <string>

namespace krv::tests {
namespace {

using namespace hosts;

class FakeProcess final : public ports::Process {
 public:
    FakeProcess(std::uint32_t id, std::string folder) : m_id(id), m_folder(std::move(folder)) {}
    std::uint32_t Id() override { return m_id; }
    std::string TemporaryFolder() override { return m_folder; }

 private:
    std::uint32_t m_id;
    std::string m_folder;
};

std::string FileName(std::uint32_t id, const std::string& folder) {
    FakeProcess process(id, folder);
    return hosts::TemporaryPictureFileName(process);
}

TEST(TemporaryPictureFileName, HoldsTheProcessIdAndAFolderThatFitsTheBuffer) {
    EXPECT_EQ(FileName(1234, "C:\\TEMP\\"), "C:\\TEMP\\KRV1234.wmf");
    EXPECT_EQ(FileName(4294967295u, ""), "KRV4294967295.wmf");
    const std::string longest(253, 'f');
    EXPECT_EQ(FileName(1, longest), longest + "KRV1.wmf");
    EXPECT_EQ(FileName(1, longest + 'f'), "KRV1.wmf");
    std::string umlauts;
    for (int count = 0; count < 253; ++count) {
        umlauts += "\xC3\xBC";
    }
    EXPECT_EQ(FileName(1, umlauts), umlauts + "KRV1.wmf") << "characters count, not bytes";
}

}  // namespace
}  // namespace krv::tests
