#include <map>
#include <string>

#include "tests/windows/SuiteTest.h"
#include "windows/text/WideText.h"

namespace krv::windows {
namespace {

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

Dump DumpOf(HKEY root) {
    Dump dump;
    AddTo(dump, root, Classes);
    // The folder itself may be new.
    dump.erase(Classes);
    return dump;
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

class Registration : public SuiteTest {
 protected:
    static HRESULT Register() { return Function<HRESULT(WINAPI*)()>("DllRegisterServer")(); }
    static HRESULT Unregister() { return Function<HRESULT(WINAPI*)()>("DllUnregisterServer")(); }
    static HRESULT Install(bool install, const wchar_t* commandLine) {
        return Function<HRESULT(WINAPI*)(BOOL, LPCWSTR)>("DllInstall")(install, commandLine);
    }
    static std::string LastDescription() {
        Microsoft::WRL::ComPtr<IErrorInfo> information;
        BSTR text = nullptr;
        if (GetErrorInfo(0, &information) == S_OK) {
            information->GetDescription(&text);
        }
        const _bstr_t owned(text, false);
        return ToUtf8(std::wstring_view(text, SysStringLen(text)));
    }
};

TEST_F(Registration, PerMachineMakesTheClassesCreatableAndLeavesNothingBehind) {
    const Dump before = DumpOf(HKEY_LOCAL_MACHINE);
    const Dump userBefore = DumpOf(HKEY_CURRENT_USER);
    ASSERT_EQ(Register(), S_OK);
    EXPECT_EQ(Register(), S_OK) << "a second time by the same file";
    for (const wchar_t* progId :
         {L"CvnKRVServer.CvnKRVServer", L"CvnDiscovery.IOSettings", L"CvnRS232.RS232Config",
          L"CvnInstrUtilities.VCUtilities", L"CvnDiscovery.CvnDiscoveryCtl"}) {
        EXPECT_EQ(FailureOf([&] { return LateBound::Create(progId); }), "") << progId;
    }
    Dump during = DumpOf(HKEY_LOCAL_MACHINE);
    const std::wstring control =
        L"Software\\Classes\\CLSID\\{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1114}";
    EXPECT_EQ(during.count(control + L"\\Control"), 1U);
    EXPECT_EQ(during.count(control + L"\\Insertable"), 0U);
    EXPECT_EQ(during.count(control + L"\\Implemented Categories"), 0U);
    Microsoft::WRL::ComPtr<ITypeLib> library;
    const GUID libraryId{
        0x52e1a9c4, 0x3f27, 0x4d0b, {0x8a, 0x55, 0x6b, 0x8f, 0x0f, 0x3c, 0x11, 0x00}};
    EXPECT_EQ(LoadRegTypeLib(libraryId, 1, 0, 0, &library), S_OK);
    library.Reset();

    EXPECT_EQ(Unregister(), S_OK);
    EXPECT_EQ(DumpOf(HKEY_LOCAL_MACHINE), before);
    EXPECT_EQ(DumpOf(HKEY_CURRENT_USER), userBefore);
    EXPECT_EQ(Unregister(), S_OK) << "a second time";
}

TEST_F(Registration, PerUserWritesTheUsersKeysAlone) {
    const Dump machine = DumpOf(HKEY_LOCAL_MACHINE);
    const Dump before = DumpOf(HKEY_CURRENT_USER);
    EXPECT_EQ(Install(true, L"elsewhere"), E_INVALIDARG);
    ASSERT_EQ(Install(true, L"User"), S_OK);
    EXPECT_EQ(DumpOf(HKEY_LOCAL_MACHINE), machine);
    Dump during = DumpOf(HKEY_CURRENT_USER);
    EXPECT_EQ(during[L"Software\\Classes\\CLSID\\{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1110}"
                     L"\\InprocServer32@"]
                  .c_str(),
              LibraryPath());
    EXPECT_EQ(Install(false, L"user"), S_OK);
    EXPECT_EQ(DumpOf(HKEY_CURRENT_USER), before);
}

TEST_F(Registration, IsRefusedOverAnotherModules) {
    const std::wstring path = L"Software\\Classes\\CvnRS232.RS232Config";
    const std::wstring foreignClass = L"{11111111-2222-3333-4444-555555555555}";
    const ForeignKey progId(path, L"Serial");
    const ForeignKey classId(path + L"\\CLSID", foreignClass);
    const ForeignKey server(L"Software\\Classes\\CLSID\\" + foreignClass + L"\\InprocServer32",
                            L"C:\\suite\\serial.dll");
    const Dump before = DumpOf(HKEY_CURRENT_USER);
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
    EXPECT_EQ(DumpOf(HKEY_CURRENT_USER), before) << "nothing of the other's goes";
    EXPECT_EQ(DumpOf(HKEY_LOCAL_MACHINE), machine);
    RegDeleteTreeW(HKEY_CURRENT_USER, (L"Software\\Classes\\CLSID\\" + foreignClass).c_str());
}

TEST_F(Registration, IsRefusedOverACopyElsewhereUnlessThatHasGone) {
    const std::wstring key = L"Software\\Classes\\CLSID\\{52E1A9C4-3F27-4D0B-8A55-6B8F0F3C1110}";
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

}  // namespace
}  // namespace krv::windows
