// Both libraries, registered, as clients in VBScript and JScript meet them: see the scripts.
#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "bench/book/windows/ApplicationObject.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/AutomationTest.h"
#include "tests/windows/ConnectDialogUser.h"
#include "tests/windows/ControlTest.h"
#include "tests/windows/HostedControl.h"
#include "tests/windows/TestedLibrary.h"
#include "tests/windows/scripting/ScriptChecks.h"
#include "tests/windows/scripting/ScriptHost.h"
#include "windows/automation/Variants.h"

namespace krv::tests {

using namespace bench;
using namespace windows;
namespace {

using windows::LateBound;

// Nothing listens there: the port is one that no program may take.
constexpr const char* NobodysAddress = "tcp://127.0.0.1:1";

std::string TextOfFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string ScriptPath(const std::string& name) {
    return std::string(KRV_SOURCE_DIR) + "/tests/windows/scripts/" + name;
}

// Who sits in front of the screen while a script runs; what scripts know as `user`:
//
//     user.Places control          puts the control into a window
//     user.WillConnectTo address   works on the connect dialog that comes next
//     user.WillClose               closes each of the product's windows that comes up ...
//     user.Closed                  ... until now; their captions
//     user.Answered                the texts of the message boxes since the last time
class ScriptUser {
 public:
    ScriptUser() {
        m_object->Members[L"Places"] = [this](const ScriptedCall& call) {
            const _variant_t control = Value(call);
            m_control.emplace(V_DISPATCH(&control));
            return _variant_t();
        };
        m_object->Members[L"WillConnectTo"] = [this](const ScriptedCall& call) {
            Start([address = windows::ToWide(TextOfValue(Value(call)))] {
                const HWND dialog = ConnectDialogUser::Dialog();
                ConnectDialogUser::ConnectTo(dialog, address);
                ConnectDialogUser::Click(dialog, L"Close");
            });
            return _variant_t();
        };
        m_object->Members[L"WillClose"] = [this](const ScriptedCall&) {
            Start([this] { CloseWindows(); });
            return _variant_t();
        };
        m_object->Members[L"Closed"] = [this](const ScriptedCall&) { return Closed(); };
        m_object->Members[L"Answered"] = [this](const ScriptedCall&) {
            std::string all;
            for (const std::string& text : m_boxes.Texts()) {
                all += (all.empty() ? "" : "|") + text;
            }
            return _variant_t(windows::ToWide(all).c_str());
        };
    }
    ScriptUser(const ScriptUser&) = delete;
    ScriptUser& operator=(const ScriptUser&) = delete;
    ~ScriptUser() { Stop(); }

    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }

 private:
    static _variant_t Value(const ScriptedCall& call) {
        _variant_t value;
        VariantCopyInd(&value, const_cast<VARIANT*>(&call.Arguments.at(0)));
        return value;
    }

    template <class Work>
    void Start(Work&& work) {
        Stop();
        m_leaving = false;
        m_thread = std::thread(std::forward<Work>(work));
    }

    void Stop() {
        m_leaving = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    static HWND OpenWindow() {
        const HWND window = FindWindowW(L"KRVForm", nullptr);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return process == GetCurrentProcessId() && IsWindowVisible(window) != 0 ? window : nullptr;
    }

    void CloseWindows() {
        HWND last = nullptr;
        while (!m_leaving) {
            const HWND window = OpenWindow();
            if (window != nullptr && window != last) {
                Close(window);
            }
            last = window;
            Sleep(5);
        }
    }

    void Close(HWND window) {
        wchar_t caption[256] = L"";
        // Without asking the thread of the window, which may be waiting for this one.
        InternalGetWindowText(window, caption, 256);
        m_captions += std::wstring(caption) + L'|';
        PostMessageW(window, WM_CLOSE, 0, 0);
    }

    // A window that its command doesn't wait for closes only now that messages are let through.
    _variant_t Closed() {
        Stop();
        if (const HWND window = OpenWindow()) {
            Close(window);
        }
        EXPECT_TRUE(windows::WaitUntil([] { return OpenWindow() == nullptr; }));
        return _variant_t(std::exchange(m_captions, {}).c_str());
    }

    MessageBoxReader m_boxes;
    std::optional<windows::HostedControl> m_control;
    std::wstring m_captions;
    std::atomic<bool> m_leaving{false};
    std::thread m_thread;
    ScriptedPointer m_object = NewScripted();
};

class NoWindow final : public bench::ProgramWindow {
 public:
    [[nodiscard]] HWND Handle() const override { return GetDesktopWindow(); }
    [[nodiscard]] bool IsShown() const override { return true; }
    void Show(bool) override {}
    [[nodiscard]] bool IsEditing() const override { return false; }
    void Quit() override {}
};

// A workbook application without a window.
class Workbooks {
 public:
    Workbooks() { m_automation->SetApplicationObject(m_object.Get()); }
    Workbooks(const Workbooks&) = delete;
    Workbooks& operator=(const Workbooks&) = delete;
    ~Workbooks() {
        m_object->End();
        m_automation->End();
    }
    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }

 private:
    bench::BookApplication m_model;
    NoWindow m_window;
    std::shared_ptr<bench::BookAutomation> m_automation =
        std::make_shared<bench::BookAutomation>(m_model, m_window);
    Microsoft::WRL::ComPtr<bench::ApplicationObject> m_object =
        windows::MakeCom<bench::ApplicationObject>(m_automation);
};

// Both libraries are registered as long as this lives, and let go of everything by its end.
class ScriptClients : public AutomationTest {
 protected:
    ScriptClients() {
        for (const TestedLibrary* library : Libraries) {
            EXPECT_EQ(library->Register(), S_OK);
        }
    }
    ~ScriptClients() override {
        for (const TestedLibrary* library : Libraries) {
            EXPECT_EQ(library->ObjectCount(), 0);
            EXPECT_EQ(library->Unregister(), S_OK);
        }
    }

    // Runs the file with the arguments; each check that fails and the error that ends it count.
    static void Run(
        const std::string& file, const std::vector<std::string>& arguments,
        const std::function<void(ScriptHost&)>& addItems = [](ScriptHost&) {}) {
        const ScriptedPointer checks = NewScriptChecks(
            arguments, [&](const std::string& text) { ADD_FAILURE() << file << ": " << text; });
        ScriptHost host(ScriptHost::LanguageOf(file));
        host.AddItem(L"test", checks.Get());
        addItems(host);
        const std::string text = TextOfFile(ScriptPath(file));
        EXPECT_FALSE(text.empty()) << file;
        if (const auto error = host.Run(text)) {
            ADD_FAILURE() << file << ": " << error->Text();
        }
    }

    static inline const std::vector<const TestedLibrary*> Libraries{&TestedLibrary::Control(),
                                                                    &TestedLibrary::Suite()};
};

// The members that callers can name, of each interface in the library.
std::vector<std::string> MembersOf(const TestedLibrary& library) {
    std::vector<std::string> members;
    Microsoft::WRL::ComPtr<ITypeLib> types;
    windows::ThrowIfFailed(LoadTypeLibEx(library.Path().c_str(), REGKIND_NONE, &types));
    for (UINT index = 0; index < types->GetTypeInfoCount(); ++index) {
        Microsoft::WRL::ComPtr<ITypeInfo> type;
        TYPEATTR* attributes = nullptr;
        windows::ThrowIfFailed(types->GetTypeInfo(index, &type));
        windows::ThrowIfFailed(type->GetTypeAttr(&attributes));
        const bool isDual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
        for (WORD function = 0; isDual && function < attributes->cFuncs; ++function) {
            FUNCDESC* description = nullptr;
            BSTR name = nullptr;
            UINT count = 0;
            windows::ThrowIfFailed(type->GetFuncDesc(function, &description));
            windows::ThrowIfFailed(type->GetNames(description->memid, &name, 1, &count));
            if ((description->wFuncFlags & FUNCFLAG_FRESTRICTED) == 0) {
                members.push_back(windows::TextOf(name));
            }
            SysFreeString(name);
            type->ReleaseFuncDesc(description);
        }
        type->ReleaseTypeAttr(attributes);
    }
    return members;
}

TEST_F(ScriptClients, KnowEveryMember) {
    for (const auto& [library, script] : std::vector<std::pair<const TestedLibrary*, std::string>>{
             {&TestedLibrary::Control(), "control"}, {&TestedLibrary::Suite(), "suite"}}) {
        const std::vector<std::string> members = MembersOf(*library);
        EXPECT_GT(members.size(), 10U);
        for (const char* ending : {".vbs", ".js"}) {
            const std::string text = TextOfFile(ScriptPath(script + ending));
            for (const std::string& member : members) {
                EXPECT_NE(text.find('.' + member), std::string::npos)
                    << "tests/windows/scripts/" << script << ending << " doesn't use " << member;
            }
        }
    }
}

// What scriptrun writes and its exit code, for one of the scripts that end with an error.
std::pair<DWORD, std::string> RunAsProgram(const std::string& file) {
    const TemporaryFolder folder;
    const std::wstring errors = (folder.Path() / "errors.txt").wstring();
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdError = CreateFileW(errors.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                  CREATE_ALWAYS, 0, nullptr);
    std::wstring command =
        L"scriptrun.exe \"" + windows::ToWide(ScriptPath(file)) + L"\" \"M7718C M9920C \"";
    PROCESS_INFORMATION process{};
    DWORD code = STILL_ACTIVE;
    if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                       &process) != FALSE) {
        WaitForSingleObject(process.hProcess, 60000);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(start.hStdError);
    return {code, TextOfFile((folder.Path() / "errors.txt").string())};
}

TEST_F(ScriptClients, AreToldTheLineAndTextOfAnErrorByTheirInterpreter) {
    for (const char* file : {"create.vbs", "create.js"}) {
        const auto [code, errors] = RunAsProgram(file);
        EXPECT_EQ(code, 1U) << file;
        EXPECT_NE(errors.find(std::string(file) + ": line 10: Subscript out of range (0x800a0009, "
                                                  "CvnDiscovery.IOSettings): "
                                                  "settings.SupportedInstruments.Remove"),
                  std::string::npos)
            << errors;
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    }
}

TEST_F(ScriptClients, UseEveryMemberOfTheSuite) {
    const RunningGenerator generator;
    const TemporaryFolder folder;
    for (const char* file : {"suite.vbs", "suite.js"}) {
        Run(file, {generator.Address(), NobodysAddress, folder.Path().string()});
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0) << file;
    }
    for (const char* picture : {"vbs.bmp", "js.bmp"}) {
        EXPECT_EQ(TextOfFile((folder.Path() / picture).string()).substr(0, 2), "BM") << picture;
    }
}

TEST_F(ScriptClients, UseEveryMemberOfTheControl) {
    const RunningGenerator generator;
    for (const char* file : {"control.vbs", "control.js"}) {
        {
            const Workbooks workbooks;
            const ScriptUser user;
            Run(file, {generator.Address()}, [&](ScriptHost& host) {
                host.AddItem(L"excel", workbooks.Object());
                host.AddItem(L"user", user.Object());
            });
        }
        EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0) << file;
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0) << file;
    }
}

TEST_F(ScriptClients, LeaveNothingBehindWhenAnErrorEndsThem) {
    for (const auto& [language, text] : std::vector<std::pair<const wchar_t*, std::string>>{
             {L"VBScript",
              "Set held = test.Create(\"CvnKRVControl.KRVControl\")\r\n"
              "Set held.ConnectedApplication = held\r\n"
              "Set settings = test.Create(\"CvnDiscovery.IOSettings\")\r\n"
              "settings.SupportedInstruments.Add held\r\n"
              "  settings.SupportedInstruments.Remove \"none\"\r\n"},
             {L"JScript",
              "var held = test.Create('CvnKRVControl.KRVControl');\n"
              "held.ConnectedApplication = held;\n"
              "var settings = test.Create('CvnDiscovery.IOSettings');\n"
              "settings.SupportedInstruments.Add(held);\n"
              "  settings.SupportedInstruments.Remove('none');\n"}}) {
        const ScriptedPointer checks = NewScriptChecks({}, [](const std::string&) {});
        ScriptHost host(language);
        host.AddItem(L"test", checks.Get());
        const auto error = host.Run(text);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->number, static_cast<long>(0x800A0005));
        EXPECT_EQ(error->line, 5U);
        EXPECT_EQ(error->lineText.rfind("settings.SupportedInstruments.Remove", 0), 0U);
        EXPECT_EQ(error->description, "Invalid procedure call or argument");
    }
}

}  // namespace
}  // namespace krv::tests
