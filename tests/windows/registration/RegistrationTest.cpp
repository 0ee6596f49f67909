// Registration as installers and users do it, on this prefix's registry.
#include <map>
#include <string>
#include <vector>

#include "tests/windows/support/SuiteTest.h"
#include "tests/windows/support/TestedLibrary.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"

namespace krv::tests {
namespace {

using namespace windows;

constexpr const wchar_t* Classes = L"Software\\Classes";
// Every value below a key, by its path and name.
using Dump = std::map<std::wstring, std::wstring>;

void AddTo(Dump& dump, HKEY root, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    dump[path] = L"(key)";
    wchar_t name[256];
    wchar_t text[1024];
    for (DWORD index = 0, length = 256, size = sizeof text;
         RegEnumValueW(key, index, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(text),
                       &size) == ERROR_SUCCESS;
         ++index, length = 256, size = sizeof text) {
        dump[path + L'@' + name] = std::wstring(text, size / sizeof(wchar_t));
    }
    for (DWORD index = 0, length = 256; RegEnumKeyExW(key, index, name, &length, nullptr, nullptr,
                                                      nullptr, nullptr) == ERROR_SUCCESS;
         ++index, length = 256) {
        AddTo(dump, root, path + L'\\' + name);
    }
    RegCloseKey(key);
}

// The entries that one of them has and the other hasn't; empty when they are the same.
std::string Differences(const Dump& before, const Dump& after) {
    std::string text;
    const auto add = [&text](const char* mark, const Dump& one, const Dump& other) {
        for (const auto& [path, value] : one) {
            const auto found = other.find(path);
            if (found == other.end() || found->second != value) {
                text += mark + ToUtf8(path) + '\n';
            }
        }
    };
    add("- ", before, after);
    add("+ ", after, before);
    return text;
}

// A registration of someone else's below the current user's classes, for as long as it lives.
class ForeignKey {
 public:
    ForeignKey(std::wstring path, const std::wstring& value) : m_path(std::move(path)) {
        RegSetKeyValueW(HKEY_CURRENT_USER, m_path.c_str(), nullptr, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }
    ForeignKey(const ForeignKey&) = delete;
    ForeignKey& operator=(const ForeignKey&) = delete;
    ~ForeignKey() { RegDeleteTreeW(HKEY_CURRENT_USER, m_path.c_str()); }

 private:
    std::wstring m_path;
};

struct RegisteredClass {
    const wchar_t* progId;
    const wchar_t* id;
    bool isControl = false;
};

struct LibraryKeys {
    const TestedLibrary& library;
    const wchar_t* typeLibrary;
    std::vector<RegisteredClass> classes;
};

const std::vector<LibraryKeys>& Libraries() {
    static const std::vector<LibraryKeys> libraries{
        {TestedLibrary::Control(),
         L"{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A00}",
         {{L"CvnKRVControl.KRVControl", L"{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7A10}", true}}},
        {TestedLibrary::Suite(),
         L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1100}",
         {{L"CvnKRVServer.CvnKRVServer", L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1110}"},
          {L"CvnDiscovery.IOSettings", L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1111}"},
          {L"CvnRS232.RS232Config", L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1112}"},
          {L"CvnInstrUtilities.VCUtilities", L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1113}"},
          {L"CvnDiscovery.CvnDiscoveryCtl", L"{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1114}", true}}},
        {TestedLibrary::AddIn(),
         L"{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7B00}",
         {{L"KRVAddIn.Connect", L"{7C1F0C52-6F0E-4A1F-9A36-2F6D1A3B7B10}"}}}};
    return libraries;
}

// What the registry has of our classes and type libraries, and of no others: other programs
// write to it as well, at any time.
Dump DumpOf(HKEY root) {
    Dump dump;
    for (const LibraryKeys& tested : Libraries()) {
        AddTo(dump, root, std::wstring(Classes) + L"\\TypeLib\\" + tested.typeLibrary);
        for (const RegisteredClass& known : tested.classes) {
            AddTo(dump, root, std::wstring(Classes) + L'\\' + known.progId);
            AddTo(dump, root, std::wstring(Classes) + L"\\CLSID\\" + known.id);
        }
    }
    return dump;
}

// For as long as it lives the current user's keys of this process, empty to begin with: no other
// program writes there or reads what a test that is ended from outside leaves behind.
class UserKeysOfOurOwn {
 public:
    UserKeysOfOurOwn() {
        RegDeleteTreeW(HKEY_CURRENT_USER, Path);
        RegCreateKeyExW(HKEY_CURRENT_USER, Path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key,
                        nullptr);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, m_key), ERROR_SUCCESS);
    }
    UserKeysOfOurOwn(const UserKeysOfOurOwn&) = delete;
    UserKeysOfOurOwn& operator=(const UserKeysOfOurOwn&) = delete;
    ~UserKeysOfOurOwn() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(m_key);
        RegDeleteTreeW(HKEY_CURRENT_USER, Path);
    }
    [[nodiscard]] static Dump All() {
        Dump dump;
        AddTo(dump, HKEY_CURRENT_USER, L"Software");
        return dump;
    }

 private:
    static constexpr const wchar_t* Path = L"Software\\KRVRegistrationTest";
    HKEY m_key = nullptr;
};

constexpr const wchar_t* ForeignClass = L"{11111111-2222-3333-4444-555555555555}";
const std::wstring SerialProgId = std::wstring(Classes) + L"\\CvnRS232.RS232Config";
const std::wstring ServerClass =
    std::wstring(Classes) + L"\\CLSID\\" + Libraries()[1].classes[0].id;

// What a program of tests that was ended from outside has left would spoil the next: registered
// libraries for tests of a computer that hasn't them.
class CleanRegistry : public ::testing::Environment {
    void SetUp() override {
        for (const LibraryKeys& tested : Libraries()) {
            EXPECT_EQ(tested.library.Unregister(), S_OK);
            EXPECT_EQ(tested.library.Install(false, L"user"), S_OK);
        }
    }
};
const ::testing::Environment* const ThisRegistry =
    ::testing::AddGlobalTestEnvironment(new CleanRegistry);

class Registration : public SuiteTest {
 protected:
    static HRESULT Register() { return TestedLibrary::Suite().Register(); }
    static HRESULT Unregister() { return TestedLibrary::Suite().Unregister(); }
    static HRESULT Install(bool install, const wchar_t* commandLine) {
        return TestedLibrary::Suite().Install(install, commandLine);
    }

    // Runs the system's registration program on the library, and returns its exit code.
    static DWORD RunRegsvr32(const std::wstring& options, const TestedLibrary& library) {
        std::wstring command = L"regsvr32.exe /s " + options + L" \"" + library.Path() + L'"';
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION process{};
        if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                           &start, &process) == FALSE) {
            return GetLastError();
        }
        DWORD code = STILL_ACTIVE;
        WaitForSingleObject(process.hProcess, 60000);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return code;
    }

    // What one registered class and its library's description look like in the registry.
    static void ExpectKeysOf(const LibraryKeys& tested, const Dump& dump) {
        const std::wstring& path = tested.library.Path();
        const auto value = [&dump](const std::wstring& key) {
            const auto found = dump.find(std::wstring(Classes) + L'\\' + key);
            return found == dump.end() ? L"(none)" : std::wstring(found->second.c_str());
        };
        for (const RegisteredClass& known : tested.classes) {
            SCOPED_TRACE(ToUtf8(known.progId));
            const std::wstring key = std::wstring(L"CLSID\\") + known.id;
            EXPECT_EQ(value(std::wstring(known.progId) + L"\\CLSID@"), known.id);
            EXPECT_EQ(value(key + L"\\InprocServer32@"), path);
            EXPECT_EQ(value(key + L"\\InprocServer32@ThreadingModel"), L"Apartment");
            EXPECT_EQ(value(key + L"\\ProgID@"), known.progId);
            EXPECT_EQ(value(key + L"\\TypeLib@"), tested.typeLibrary);
            EXPECT_EQ(value(key + L"\\Control") == L"(key)", known.isControl);
            EXPECT_EQ(value(key + L"\\Insertable"), L"(none)");
            EXPECT_EQ(value(key + L"\\Implemented Categories"), L"(none)")
                << "marked safe for scripting";
        }
        const std::wstring library =
            std::wstring(L"TypeLib\\") + tested.typeLibrary + L"\\1.0\\0\\";
        constexpr bool is64Bit = sizeof(void*) == 8;
        EXPECT_EQ(value(library + L"win64@"), is64Bit ? path : L"(none)");
        EXPECT_EQ(value(library + L"win32@"), is64Bit ? L"(none)" : path);
    }

    static std::string LastDescription() {
        Microsoft::WRL::ComPtr<IErrorInfo> information;
        BSTR text = nullptr;
        if (GetErrorInfo(0, &information) == S_OK) {
            information->GetDescription(&text);
        }
        const _bstr_t owned(text, false);
        return TextOf(text);
    }
};

TEST_F(Registration, PerMachineMakesTheClassesCreatableAndLeavesNothingBehind) {
    const Dump before = DumpOf(HKEY_LOCAL_MACHINE);
    const Dump userBefore = DumpOf(HKEY_CURRENT_USER);
    for (const LibraryKeys& tested : Libraries()) {
        ASSERT_EQ(RunRegsvr32(L"", tested.library), 0U);
        EXPECT_EQ(RunRegsvr32(L"", tested.library), 0U) << "a second time by the same file";
    }
    const Dump during = DumpOf(HKEY_LOCAL_MACHINE);
    for (const LibraryKeys& tested : Libraries()) {
        ExpectKeysOf(tested, during);
        for (const RegisteredClass& known : tested.classes) {
            EXPECT_EQ(ErrorOf([&] { return LateBound::Create(known.progId); }), "none");
        }
        GUID id{};
        Microsoft::WRL::ComPtr<ITypeLib> library;
        EXPECT_EQ(CLSIDFromString(tested.typeLibrary, &id), S_OK);
        EXPECT_EQ(LoadRegTypeLib(id, 1, 0, 0, &library), S_OK);
    }
    for (const LibraryKeys& tested : Libraries()) {
        EXPECT_EQ(RunRegsvr32(L"/u", tested.library), 0U);
    }
    EXPECT_EQ(Differences(before, DumpOf(HKEY_LOCAL_MACHINE)), "");
    EXPECT_EQ(Differences(userBefore, DumpOf(HKEY_CURRENT_USER)), "");
    EXPECT_EQ(Unregister(), S_OK) << "a second time";
}

TEST_F(Registration, PerUserIsAskedForByOptionsOfTheSystemsProgram) {
    const Dump before = DumpOf(HKEY_CURRENT_USER);
    const LibraryKeys& suite = Libraries()[1];
    ASSERT_EQ(RunRegsvr32(L"/n /i:user", suite.library), 0U);
    ExpectKeysOf(suite, DumpOf(HKEY_CURRENT_USER));
    EXPECT_EQ(RunRegsvr32(L"/u /n /i:user", suite.library), 0U);
    EXPECT_EQ(Differences(before, DumpOf(HKEY_CURRENT_USER)), "");
}

class UserRegistration : public Registration {
    const UserKeysOfOurOwn m_keys;
};

TEST_F(UserRegistration, WritesTheUsersKeysAloneAndLeavesNothingBehind) {
    const Dump machine = DumpOf(HKEY_LOCAL_MACHINE);
    const Dump before = UserKeysOfOurOwn::All();
    EXPECT_EQ(Install(true, L"elsewhere"), E_INVALIDARG);
    for (const LibraryKeys& tested : Libraries()) {
        ASSERT_EQ(tested.library.Install(true, L"User"), S_OK);
        ExpectKeysOf(tested, DumpOf(HKEY_CURRENT_USER));
    }
    EXPECT_EQ(Differences(machine, DumpOf(HKEY_LOCAL_MACHINE)), "");
    for (const wchar_t* application : {L"Excel", L"Word"}) {
        // Excel and Word load it at their start.
        DWORD behavior = 0;
        DWORD size = sizeof behavior;
        const std::wstring key = std::wstring(L"Software\\Microsoft\\Office\\") + application +
                                 L"\\Addins\\KRVAddIn.Connect";
        EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, key.c_str(), L"LoadBehavior", RRF_RT_REG_DWORD,
                               nullptr, &behavior, &size),
                  ERROR_SUCCESS);
        EXPECT_EQ(behavior, 3U);
    }
    for (const LibraryKeys& tested : Libraries()) {
        EXPECT_EQ(tested.library.Install(false, L"user"), S_OK);
    }
    // Not even an empty group of keys, but for the one that all groups lie in.
    Dump after = UserKeysOfOurOwn::All();
    after.erase(L"Software");
    after.erase(Classes);
    EXPECT_EQ(Differences(before, after), "");
}

TEST_F(UserRegistration, OfOneWordSizeLeavesTheOthersTypeLibraryAlone) {
    const std::wstring version =
        std::wstring(Classes) + L"\\TypeLib\\" + Libraries()[1].typeLibrary + L"\\1.0";
    const std::wstring other = version + (sizeof(void*) == 8 ? L"\\0\\win32" : L"\\0\\win64");
    {
        const ForeignKey library(other, L"C:\\other\\KRVSuite.dll");
        ASSERT_EQ(Install(true, L"user"), S_OK);
        EXPECT_EQ(Install(false, L"user"), S_OK);
        const Dump after = DumpOf(HKEY_CURRENT_USER);
        EXPECT_EQ(after.count(other + L'@'), 1U);
        EXPECT_EQ(after.count(version + L"\\FLAGS@"), 1U) << "both need it";
        EXPECT_EQ(after.count(ServerClass), 0U);
    }
    ASSERT_EQ(Install(true, L"user"), S_OK);
    EXPECT_EQ(Install(false, L"user"), S_OK);
    EXPECT_EQ(DumpOf(HKEY_CURRENT_USER).count(version), 0U);
}

TEST_F(UserRegistration, IsRefusedOverAnotherModules) {
    const std::wstring foreignPath = std::wstring(Classes) + L"\\CLSID\\" + ForeignClass;
    const ForeignKey progId(SerialProgId, L"Serial");
    const ForeignKey classId(SerialProgId + L"\\CLSID", ForeignClass);
    const ForeignKey foreign(foreignPath, L"Serial");
    const ForeignKey server(foreignPath + L"\\InprocServer32", L"C:\\suite\\serial.dll");
    const Dump before = UserKeysOfOurOwn::All();
    const Dump machine = DumpOf(HKEY_LOCAL_MACHINE);
    for (const bool user : {false, true}) {
        EXPECT_EQ(user ? Install(true, L"user") : Register(),
                  HRESULT_FROM_WIN32(ERROR_ALREADY_REGISTERED));
        EXPECT_EQ(LastDescription(),
                  "The component \"CvnRS232.RS232Config\" is already registered by "
                  "C:\\suite\\serial.dll. Unregister that first if this one shall take its place.");
    }
    EXPECT_EQ(Unregister(), S_OK);
    EXPECT_EQ(Install(false, L"user"), S_OK);
    EXPECT_EQ(Differences(before, UserKeysOfOurOwn::All()), "") << "nothing of the other's goes";
    EXPECT_EQ(Differences(machine, DumpOf(HKEY_LOCAL_MACHINE)), "");
}

TEST_F(UserRegistration, IsRefusedOverACopyElsewhereUnlessThatHasGone) {
    const std::wstring& key = ServerClass;
    const ForeignKey own(key, L"");
    wchar_t other[MAX_PATH];
    GetSystemDirectoryW(other, MAX_PATH);
    {
        const ForeignKey server(key + L"\\InprocServer32", std::wstring(other) + L"\\ole32.dll");
        EXPECT_EQ(Install(true, L"user"), HRESULT_FROM_WIN32(ERROR_ALREADY_REGISTERED));
    }
    const ForeignKey server(key + L"\\InprocServer32", std::wstring(other) + L"\\no-such.dll");
    EXPECT_EQ(Install(true, L"user"), S_OK);
    EXPECT_EQ(Install(false, L"user"), S_OK);
}

TEST_F(UserRegistration, WhoseFileHasGoneDoesNotHideTheMachines) {
    const LibraryKeys& suite = Libraries()[1];
    const Dump empty = DumpOf(HKEY_CURRENT_USER);
    ASSERT_EQ(Install(true, L"user"), S_OK);
    ASSERT_EQ(Register(), S_OK);
    ExpectKeysOf(suite, DumpOf(HKEY_CURRENT_USER));
    for (const auto& [path, value] : DumpOf(HKEY_CURRENT_USER)) {
        if (value.c_str() == suite.library.Path()) {
            static constexpr wchar_t Gone[] = L"C:\\gone\\KRVSuite.dll";
            RegSetKeyValueW(HKEY_CURRENT_USER, path.substr(0, path.find(L'@')).c_str(), nullptr,
                            REG_SZ, Gone, sizeof Gone);
        }
    }
    EXPECT_EQ(Register(), S_OK);
    EXPECT_EQ(Differences(empty, DumpOf(HKEY_CURRENT_USER)), "");
    EXPECT_EQ(Unregister(), S_OK);
}

}  // namespace
}  // namespace krv::tests
