// ScriptRunner: runs scripts with the system's own script engines, as an office application or a
// script file's interpreter does: a client of automation that this project didn't write.
//
// One for each run; apartment's thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <activscp.h>
#include <wrl/client.h>

#include <string>

namespace krv::tests {

class ScriptSite;

class ScriptRunner {
 public:
    // E.g. "VBScript". Throws Error when there is no such engine.
    explicit ScriptRunner(const wchar_t* language);
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    // The engine lets go of all that the script held.
    ~ScriptRunner();

    // An object that the script knows by this name.
    void AddItem(const wchar_t* name, IDispatch* object);
    // Runs the text from beginning to end, and returns the error that ended it, e.g.
    // "line 3: Overflow (source)"; empty for none.
    [[nodiscard]] std::string Run(const std::string& text);

    // The language of a file by its ending, ".vbs" or ".js"; null for any other.
    [[nodiscard]] static const wchar_t* LanguageOf(const std::string& file);

 private:
    Microsoft::WRL::ComPtr<IActiveScript> m_engine;
    Microsoft::WRL::ComPtr<ScriptSite> m_site;
};

}  // namespace krv::tests
