// What a checkup finds on computers as users have them.
#include "doctor/Checkup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <utility>

#include "doctor/Components.h"
#include "doctor/ProgramHeader.h"

namespace krv::tests {
namespace {

using namespace doctor;

// A computer with 64-bit Windows. Its registry is a list of "SCOPE\path\name" with their values.
class FakeComputer final : public InstalledSystem {
 public:
    std::map<std::string, std::string> Texts;
    std::map<std::string, std::uint32_t> Numbers;
    std::map<std::string, std::vector<RegistryValue>> Lists;
    std::map<std::string, ProgramFacts> Files;
    std::map<std::string, std::string> LoadFaults;
    std::vector<std::string> Registered;

    static std::string PlaceOf(const RegistryKey& key) {
        return (key.scope == Scope::User ? "HKCU\\" : "HKLM\\") + key.path;
    }
    // All names of the library's classes.
    void Install(const std::string& root, const Component& component, int wordSize,
                 const std::string& file) {
        for (const std::string progId : component.progIds) {
            Texts[root + "\\Software\\Classes\\" + progId + "\\CLSID\\"] = '{' + progId + '}';
            Texts[root + "\\Software\\Classes\\" + (wordSize == 32 ? "Wow6432Node\\" : "") +
                  "CLSID\\{" + progId + "}\\InprocServer32\\"] = file;
        }
        Files[file] = {wordSize, "1.0.0"};
    }

    std::string Name() const override { return "Windows"; }
    std::string ProgramFile() const override { return "C:\\KRV\\krv.exe"; }
    std::string AddInLog() const override { return {}; }
    int OwnWordSize() const override { return 64; }
    std::vector<int> WordSizes() const override { return {64, 32}; }
    std::optional<std::string> Text(const RegistryKey& key,
                                    const std::string& name) const override {
        return Find(Texts, PlaceOf(key) + '\\' + name);
    }
    std::optional<std::uint32_t> Number(const RegistryKey& key,
                                        const std::string& name) const override {
        return Find(Numbers, PlaceOf(key) + '\\' + name);
    }
    std::vector<RegistryValue> Values(const RegistryKey& key) const override {
        return Find(Lists, PlaceOf(key)).value_or(std::vector<RegistryValue>());
    }
    std::optional<ProgramFacts> Facts(const std::string& file) const override {
        return Find(Files, file);
    }
    std::string LoadFault(const std::string& file) const override {
        return Find(LoadFaults, file).value_or("");
    }
    void SetNumber(const RegistryKey& key, const std::string& name, std::uint32_t value) override {
        Numbers[PlaceOf(key) + '\\' + name] = value;
    }
    void DeleteValue(const RegistryKey& key, const std::string& name) override {
        std::erase_if(Lists[PlaceOf(key)], [&](const auto& value) { return value.name == name; });
    }
    void Register(const std::string& file, int wordSize, Scope scope) override {
        Registered.push_back(file + ' ' + std::to_string(wordSize) + ' ' + OwnerOf(scope));
    }

 private:
    template <class Value>
    static std::optional<Value> Find(const std::map<std::string, Value>& values,
                                     const std::string& place) {
        const auto found = values.find(place);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
};

// "verdict item bits owner: state", a line for each that is not absent.
std::vector<std::string> Told(const std::vector<Finding>& findings) {
    std::vector<std::string> lines;
    for (const Finding& finding : findings) {
        if (finding.verdict != Verdict::Absent) {
            lines.push_back((finding.verdict == Verdict::Good ? "ok " : "FAULT ") + finding.item +
                            ' ' + std::to_string(finding.wordSize) + ' ' + finding.owner + ": " +
                            finding.state);
        }
    }
    return lines;
}

using Lines = std::vector<std::string>;
constexpr const Component& Control = Components[0];
constexpr const Component& Suite = Components[1];

void RepairAll(const std::vector<Finding>& findings, InstalledSystem& system) {
    for (const Finding& finding : findings) {
        if (finding.repair) {
            finding.repair(system);
        }
    }
}

TEST(LibraryCheckupTest, FindsTheLibrariesOfEachWordSizeAndWhoHasThem) {
    FakeComputer computer;
    EXPECT_EQ(Told(ExamineLibraries(computer)), Lines{});
    computer.Install("HKLM", Control, 64, "C:\\All\\KRVControl.dll");
    computer.Install("HKCU", Control, 64, "C:\\Mine\\KRVControl.dll");
    computer.Install("HKLM", Control, 32, "C:\\All\\x86\\KRVControl.dll");
    const auto findings = ExamineLibraries(computer);
    EXPECT_EQ(Told(findings), (Lines{"ok toolbar control 64 this user: registered, loads",
                                     "ok toolbar control 32 all users: registered"}));
    EXPECT_EQ(findings[0].file, "C:\\Mine\\KRVControl.dll");
}

TEST(LibraryCheckupTest, TellsWhatIsWrongWithALibraryAndWhatToDo) {
    FakeComputer computer;
    computer.Install("HKCU", Control, 64, "C:\\Old\\KRVControl.dll");
    computer.Install("HKCU", Control, 32, "C:\\KRV\\x64\\KRVControl.dll");
    computer.Install("HKCU", Suite, 64, "C:\\KRV\\x64\\KRVSuite.dll");
    computer.Files.erase("C:\\Old\\KRVControl.dll");
    computer.Files["C:\\KRV\\x64\\KRVControl.dll"].bits = 64;
    computer.LoadFaults["C:\\KRV\\x64\\KRVSuite.dll"] = "Access denied.";
    computer.Texts.erase("HKCU\\Software\\Classes\\CvnDiscovery.IOSettings\\CLSID\\");
    const auto findings = ExamineLibraries(computer);
    EXPECT_EQ(Told(findings),
              (Lines{"FAULT toolbar control 64 this user: registered, but its file is gone",
                     "FAULT toolbar control 32 this user: a 64-bit library, registered for 32-bit "
                     "programs",
                     "FAULT suite components 64 this user: registered, but can't be loaded: Access "
                     "denied.",
                     "FAULT CvnDiscovery.IOSettings 64 : not registered, while others of its "
                     "library are"}));
    for (const Finding& finding : findings) {
        EXPECT_NE(finding.remedy.empty(), finding.verdict == Verdict::Fault) << finding.item;
    }
    // Nothing was changed yet. Only the 64-bit library is beside krv.
    EXPECT_EQ(computer.Registered, Lines{});
    RepairAll(findings, computer);
    EXPECT_EQ(computer.Registered, Lines{"C:\\KRV\\x64\\KRVControl.dll 64 this user"});
}

TEST(LibraryCheckupTest, FindsALibraryThatIsInstalledAndNotRegistered) {
    FakeComputer computer;
    computer.Files["C:\\KRV\\x86\\KRVSuite.dll"] = {32, "1.0.0"};
    const auto findings = ExamineLibraries(computer);
    EXPECT_EQ(Told(findings), Lines{"FAULT suite components 32 : installed, but not registered"});
    RepairAll(findings, computer);
    EXPECT_EQ(computer.Registered, Lines{"C:\\KRV\\x86\\KRVSuite.dll 32 this user"});
}

constexpr const char* ExcelPath =
    "HKLM\\Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\App Paths\\excel.exe\\";

std::string AddIn(const std::string& root, const std::string& application) {
    return root + "\\Microsoft\\Office\\" + application + "\\Addins\\" + AddInProgId +
           "\\LoadBehavior";
}

TEST(OfficeCheckupTest, TellsWhetherAnApplicationWouldLoadTheAddIn) {
    FakeComputer computer;
    EXPECT_EQ(Told(ExamineOffice(computer)), Lines{});
    computer.Texts[ExcelPath] = "\"C:\\Office\\EXCEL.EXE\"";
    computer.Files["C:\\Office\\EXCEL.EXE"] = {32, "16.0.5000"};
    EXPECT_EQ(Told(ExamineOffice(computer)),
              (Lines{"ok Excel 32 : installed", "FAULT Excel add-in 32 : not known to Excel"}));
    // A 32-bit Excel doesn't see the 64-bit programs' key.
    computer.Numbers[AddIn("HKLM\\Software", "Excel")] = 3;
    EXPECT_EQ(Told(ExamineOffice(computer)).back(), "FAULT Excel add-in 32 : not known to Excel");
    computer.Numbers[AddIn("HKLM\\Software\\Wow6432Node", "Excel")] = 3;
    computer.Numbers[AddIn("HKCU\\Software", "Word")] = 16;
    EXPECT_EQ(Told(ExamineOffice(computer)),
              (Lines{"ok Excel 32 : installed",
                     "ok Excel add-in 32 all users: switched on (LoadBehavior 3)",
                     "ok Word add-in 0 this user: switched on (LoadBehavior 16)"}));
}

TEST(OfficeCheckupTest, SwitchesOnWhatAnApplicationHasSwitchedOff) {
    FakeComputer computer;
    computer.Numbers[AddIn("HKLM\\Software", "Excel")] = 3;
    computer.Numbers[AddIn("HKCU\\Software", "Excel")] = 2;
    computer.Numbers[AddIn("HKLM\\Software", "Word")] = 0;
    std::vector<std::byte> path;
    for (const char letter : std::string("\1\2c:\\krv\\x64\\krvaddin.DLL")) {
        path.push_back(static_cast<std::byte>(letter));
        path.push_back(std::byte{0});
    }
    computer.Lists["HKCU\\Software\\Microsoft\\Office\\16.0\\Excel\\Resiliency\\DisabledItems"] = {
        {"1A2B", {std::byte{'k'}, std::byte{0}}}, {"3C4D", path}};
    const auto findings = ExamineOffice(computer);
    EXPECT_EQ(
        Told(findings),
        (Lines{"FAULT Excel add-in 0 this user: unloaded after a failure (LoadBehavior 2)",
               "FAULT Excel add-in 0 this user: disabled by Excel after a failure or a "
               "slow start, in Software\\Microsoft\\Office\\16.0\\Excel\\Resiliency\\DisabledItems",
               "FAULT Word add-in 0 all users: switched off (LoadBehavior 0)"}));
    RepairAll(findings, computer);
    EXPECT_EQ(Told(ExamineOffice(computer)),
              (Lines{"ok Excel add-in 0 this user: switched on (LoadBehavior 3)",
                     "ok Word add-in 0 this user: switched on (LoadBehavior 3)"}));
    // What was disabled of others stays so.
    EXPECT_EQ(computer.Lists.begin()->second.size(), 1u);
}

TEST(OfficeCheckupTest, TellsWhoKeepsAddInsOut) {
    FakeComputer computer;
    computer.Numbers
        ["HKLM\\Software\\Policies\\Microsoft\\Office\\16.0\\Word\\Security\\"
         "RequireAddinSig"] = 1;
    computer.Numbers
        ["HKCU\\Software\\Microsoft\\Office\\15.0\\Excel\\Security\\"
         "DisableAllAddins"] = 1;
    const auto findings = ExamineOffice(computer);
    EXPECT_EQ(Told(findings),
              (Lines{"FAULT Excel add-in 0 this user: kept out by the setting DisableAllAddins in "
                     "Software\\Microsoft\\Office\\15.0\\Excel\\Security",
                     "FAULT Word add-in 0 all users: kept out by the setting RequireAddinSig in "
                     "Software\\Policies\\Microsoft\\Office\\16.0\\Word\\Security"}));
    for (const Finding& finding : findings) {
        EXPECT_EQ(finding.repair, nullptr);
        const bool isPolicy = finding.state.find("Word") != std::string::npos;
        if (finding.verdict == Verdict::Fault) {
            EXPECT_EQ(finding.remedy.find("policy") != std::string::npos, isPolicy);
        }
    }
}

TEST(ProgramHeaderTest, TellsTheWordSizeAndRefusesWhatIsNoProgram) {
    std::string program(0x100, '\0');
    program.replace(0, 2, "MZ");
    program[0x3C] = '\x80';
    program.replace(0x80, 6, std::string("PE\0\0\x64\x86", 6));
    const auto wordSize = [](const std::string& bytes) {
        std::istringstream file(bytes);
        return ProgramWordSize(file);
    };
    EXPECT_EQ(wordSize(program), 64);
    program.replace(0x84, 2, "\x4C\x01");
    EXPECT_EQ(wordSize(program), 32);
    program.replace(0x84, 2, "\x64\xAA");
    EXPECT_EQ(wordSize(program), 0);
    EXPECT_EQ(wordSize(program.substr(0, 0x84)), 0);
    EXPECT_EQ(wordSize(""), 0);
}

}  // namespace
}  // namespace krv::tests
