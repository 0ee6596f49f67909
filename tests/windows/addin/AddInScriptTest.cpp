// The add-in as a macro sees it: a script of the system's own engine, over the application's
// automation.
#include <fstream>
#include <iterator>
#include <string>

#include "bench/shared/windows/AddInRibbon.h"
#include "common/ScopeExit.h"
#include "tests/windows/addin/AddInHost.h"
#include "tests/windows/scripting/ScriptChecks.h"
#include "tests/windows/scripting/ScriptRunner.h"

namespace krv::tests {
namespace {

TEST_F(AddInInExcel, IsSeenByMacros) {
    Start();
    const bench::AddInRibbon ribbon(m_addIns->All()[0]->Instance(),
                                    m_objects->Automation().shared_from_this(), [] {});
    ASSERT_TRUE(WaitForControl());
    PumpMessages();
    std::ifstream file(std::string(KRV_SOURCE_DIR) + "/tests/windows/scripts/addin.vbs");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    {
        const ScriptedPointer checks =
            NewScriptChecks({}, [](const std::string& difference) { ADD_FAILURE() << difference; });
        ScriptRunner runner(L"VBScript");
        runner.AddItem(L"test", checks.Get());
        runner.AddItem(L"Application", m_objects->Application());
        ScriptedObject::ScriptRuns = true;
        const ScopeExit strictAgain([] { ScriptedObject::ScriptRuns = false; });
        EXPECT_EQ(runner.Run(text), "");
    }
    End();
}

}  // namespace
}  // namespace krv::tests
