// scriptrun FILE [ARGUMENT]...: runs a VBScript (.vbs) or JScript (.js) file. The script knows the
// object `test` (ScriptChecks.h). An error that it doesn't handle is written to standard error with
// its line and the line's text, and so are the objects that the project's libraries are left with.
//
// Exit code: 0 when the script ran, its checks held and nothing is left, 1 when not, 2 when it
// can't be run.
#include <windows.h>
// After windows.h, which it needs.
#include <ole2.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "common/Error.h"
#include "tests/windows/scripting/ScriptChecks.h"
#include "tests/windows/scripting/ScriptHost.h"

using namespace krv::tests;

namespace {

int RunFile(const std::string& file, std::vector<std::string> arguments) {
    const wchar_t* const language = ScriptHost::LanguageOf(file);
    std::ifstream stream(file, std::ios::binary);
    if (language == nullptr || !stream) {
        std::fprintf(stderr, "%s: %s\n", file.c_str(),
                     language == nullptr ? "neither .vbs nor .js" : "can't be read");
        return 2;
    }
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    int failures = 0;
    const ScriptedPointer checks =
        NewScriptChecks(std::move(arguments), [&](const std::string& difference) {
            std::fprintf(stderr, "%s: %s\n", file.c_str(), difference.c_str());
            ++failures;
        });
    ScriptHost host(language);
    host.AddItem(L"test", checks.Get());
    if (const auto error = host.Run(text)) {
        std::fprintf(stderr, "%s: %s\n", file.c_str(), error->Text().c_str());
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int count, char** words) {
    if (count < 2) {
        std::fputs("usage: scriptrun FILE.vbs|FILE.js [ARGUMENT]...\n", stderr);
        return 2;
    }
    OleInitialize(nullptr);
    int code = 2;
    try {
        code = RunFile(words[1], {words + 2, words + count});
    } catch (const krv::Error& error) {
        std::fprintf(stderr, "%s: %s\n", words[1], error.what());
    }
    OleUninitialize();
    return code;
}
