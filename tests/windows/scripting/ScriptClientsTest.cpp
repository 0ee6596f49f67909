// Both libraries, registered, as clients in VBScript and JScript meet them: see the scripts.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>

#include "common/ScopeExit.h"
#include "tests/support/RunningGenerator.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/scripting/ScriptChecks.h"
#include "tests/windows/scripting/ScriptRunner.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ControlTest.h"
#include "tests/windows/support/DialogUser.h"
#include "tests/windows/support/ExcelProgram.h"
#include "tests/windows/support/RegisteredLibrary.h"
#include "windows/automation/Variants.h"

namespace krv::tests {
namespace {

using windows::LateBound;

// Nothing listens there: the port is one that no program may take.
constexpr const char* UnusedAddress = "tcp://127.0.0.1:1";

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
            m_thread = std::thread(
                [address = TextOfValue(Value(call))] { Act([&] { UseConnectDialog(address); }); });
            return _variant_t();
        };
        m_object->Members[L"WillClose"] = [this](const ScriptedCall&) {
            m_boxes.CloseForms(true);
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
    ~ScriptUser() {
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

    [[nodiscard]] IDispatch* Object() const { return m_object.Get(); }

 private:
    static _variant_t Value(const ScriptedCall& call) {
        _variant_t value;
        VariantCopyInd(&value, const_cast<VARIANT*>(&call.Arguments.at(0)));
        return value;
    }

    // A window that its command doesn't wait for closes only now that messages are let through.
    _variant_t Closed() {
        EXPECT_TRUE(WaitUntil([] { return MessageBoxReader::Shown(L"KRVForm") == nullptr; }));
        m_boxes.CloseForms(false);
        return _variant_t(windows::ToWide(m_boxes.ClosedForms()).c_str());
    }

    MessageBoxReader m_boxes;
    std::optional<AtlContainer> m_control;
    std::thread m_thread;
    ScriptedPointer m_object = NewScripted();
};

class ScriptClients : public AutomationTest {
 protected:
    // Runs the file with the arguments; each check that fails and the error that ends it count.
    static void Run(
        const std::string& file, const std::vector<std::string>& arguments,
        const std::function<void(ScriptRunner&)>& addItems = [](ScriptRunner&) {}) {
        const ScriptedPointer checks = NewScriptChecks(
            arguments, [&](const std::string& text) { ADD_FAILURE() << file << ": " << text; });
        ScriptRunner runner(ScriptRunner::LanguageOf(file));
        runner.AddItem(L"test", checks.Get());
        addItems(runner);
        const std::string text = TextOfFile(ScriptPath(file));
        EXPECT_FALSE(text.empty()) << file;
        ScriptedObject::ScriptRuns = true;
        const ScopeExit strictAgain([] { ScriptedObject::ScriptRuns = false; });
        EXPECT_EQ(runner.Run(text), "") << file;
    }

    const RegisteredLibrary m_control{TestedLibrary::Control()};
    const RegisteredLibrary m_suite{TestedLibrary::Suite()};
};

TEST_F(ScriptClients, UseEveryMemberOfTheSuite) {
    const RunningGenerator generator;
    const TemporaryFolder folder;
    for (const char* file : {"suite.vbs", "suite.js"}) {
        Run(file, {generator.Address(), UnusedAddress, folder.Path().string()});
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
            const ExcelProgram workbooks;
            const ScriptUser user;
            Run(file, {generator.Address()}, [&](ScriptRunner& runner) {
                runner.AddItem(L"excel", workbooks.Application());
                runner.AddItem(L"user", user.Object());
            });
        }
        EXPECT_EQ(TestedLibrary::Control().ObjectCount(), 0) << file;
        EXPECT_EQ(TestedLibrary::Suite().ObjectCount(), 0) << file;
    }
}

}  // namespace
}  // namespace krv::tests
