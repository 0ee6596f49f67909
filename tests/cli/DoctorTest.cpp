// krv doctor, on whatever computer the tests run.
#include <nlohmann/json.hpp>

#include "common/files/StandardFiles.h"
#include "formats/ZipArchive.h"
#include "tests/cli/CommandLineFixture.h"

namespace krv::tests {
namespace {

using Json = nlohmann::json;

class DoctorTest : public CommandLineTest {
 protected:
    // The finding of this item; null for none.
    Json FindingOf(const std::string& item) {
        const Json report = Json::parse(Out);
        for (const Json& finding : report["findings"]) {
            if (finding["item"] == item) {
                return finding;
            }
        }
        return nullptr;
    }
    // Read to their ends, where the sums are compared.
    std::vector<std::string> MembersOf(const std::string& name) {
        files::StandardFiles files;
        const formats::InputFile archive{files, Path(name)};
        std::vector<std::string> names;
        for (const auto& member : formats::ListZipMembers(archive, Content(name).size())) {
            const auto bytes = formats::OpenZipMember(archive, member);
            EXPECT_TRUE(formats::SkipBytes(*bytes, member.bytes));
            names.push_back(member.name);
        }
        return names;
    }
    bool Tells(const std::string& text) const { return Out.find(text) != std::string::npos; }
};

TEST_F(DoctorTest, TellsWhetherTheAddressAnswers) {
    Surroundings.address = "sim://M7718C";
    Run({"doctor", "--json"});
    EXPECT_EQ(FindingOf("address")["verdict"], "good");
    EXPECT_EQ(FindingOf("address")["state"],
              "sim://M7718C: M7718C answers, serial number US00000001, firmware B.03.40");
    EXPECT_EQ(FindingOf("krv")["verdict"], "good");
    EXPECT_EQ(FindingOf("configuration")["verdict"], "absent");

    EXPECT_EQ(Run({"doctor", "--address", "127.0.0.1:1"}), 1);
    EXPECT_TRUE(Tells("FAULT")) << Out;
    EXPECT_TRUE(Tells("'krv list' shows the instruments that answer.")) << Out;
    Surroundings.address.reset();
    Run({"doctor"});
    EXPECT_TRUE(Tells("none is set: --address names one")) << Out;
}

TEST_F(DoctorTest, TellsOfAConfigurationThatNoCommandCanUse) {
    Surroundings.configFile = File("config", "colour = blue\n");
    EXPECT_EQ(Run({"doctor", "--json"}), 1);
    EXPECT_EQ(FindingOf("configuration")["verdict"], "fault");
    EXPECT_NE(FindingOf("configuration")["state"].get<std::string>().find("colour"),
              std::string::npos);
}

TEST_F(DoctorTest, BundlesTheReportForOthersAndLeavesOutWhatIsPrivate) {
    Surroundings.configFile = File("config", "address = sim://M7718C\nvisa = /srv/jo/none.so\n");
    const std::vector<std::string> words{"doctor", "--log", Path("talk.txt"), "--bundle",
                                         Path("report.zip")};
    Run(words);
    const std::string whole = Content("report.zip");
    auto members = MembersOf("report.zip");
    // Of a computer on which the add-in has run.
    std::erase(members, "add-in.txt");
    EXPECT_EQ(members, (std::vector<std::string>{"doctor.txt", "doctor.json", "config.txt",
                                                 "conversation.txt"}));
    for (const char* told : {"US00000001", "/srv/jo/none.so", "*IDN?"}) {
        EXPECT_NE(whole.find(told), std::string::npos) << told;
    }
    auto discreet = words;
    discreet.emplace_back("--private");
    Run(discreet);
    const std::string parts = Content("report.zip");
    EXPECT_NE(parts.find("M7718C"), std::string::npos);
    EXPECT_NE(parts.find("none.so"), std::string::npos);
    EXPECT_EQ(parts.find("US00000001"), std::string::npos);
    EXPECT_EQ(parts.find("/srv/jo"), std::string::npos);
    EXPECT_EQ(parts.find(Path("").substr(0, Path("").size() - 1)), std::string::npos);

    EXPECT_EQ(Run({"doctor", "--private"}), 2);
    EXPECT_EQ(Run({"doctor", "--log", "a.zip", "--bundle", "./a.zip"}), 2);
}

}  // namespace
}  // namespace krv::tests
