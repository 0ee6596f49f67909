#include "tests/windows/scripting/ScriptRunner.h"

#include <comdef.h>

#include <cstdio>
#include <map>
#include <sstream>

#include "windows/automation/ComGuard.h"
#include "windows/automation/ComObject.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"

namespace krv::tests {

using namespace windows;

using Microsoft::WRL::ComPtr;
using windows::ThrowIfFailed;

// What the engine asks and reports.
class ScriptSite final : public windows::ComObject<IActiveScriptSite, IActiveScriptSiteWindow> {
 public:
    std::map<std::wstring, ComPtr<IDispatch>> Items;
    std::string Failure;

    HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
        *locale = 1033;  // as scripts of an application in US English
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                                          ITypeInfo** information) override {
        if (information != nullptr) {
            *information = nullptr;
        }
        const auto item = Items.find(name);
        if (item == Items.end() || (wanted & SCRIPTINFO_IUNKNOWN) == 0) {
            return TYPE_E_ELEMENTNOTFOUND;
        }
        return item->second.CopyTo(reinterpret_cast<IDispatch**>(object));
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO exception{};
        if (SUCCEEDED(error->GetExceptionInfo(&exception))) {
            if (exception.pfnDeferredFillIn != nullptr) {
                exception.pfnDeferredFillIn(&exception);
            }
            const _bstr_t source(exception.bstrSource, false);
            const _bstr_t description(exception.bstrDescription, false);
            SysFreeString(exception.bstrHelpFile);
            ULONG line = 0;
            LONG column = 0;
            DWORD context = 0;
            error->GetSourcePosition(&context, &line, &column);
            Failure = "line " + std::to_string(line + 1) + ": " +
                      windows::TextOf(exception.bstrDescription) + " (" +
                      windows::TextOf(exception.bstrSource) + ")";
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = nullptr;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override { return S_OK; }
};

namespace {

ComPtr<IActiveScript> CreateEngine(const wchar_t* language) {
    CLSID id{};
    ComPtr<IActiveScript> engine;
    ThrowIfFailed(CLSIDFromProgID(language, &id));
    ThrowIfFailed(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                                   reinterpret_cast<void**>(engine.GetAddressOf())));
    return engine;
}

ComPtr<IActiveScriptParse> ParserOf(IActiveScript& engine) {
    ComPtr<IActiveScriptParse> parser;
    ThrowIfFailed(engine.QueryInterface(__uuidof(IActiveScriptParse),
                                        reinterpret_cast<void**>(parser.GetAddressOf())));
    return parser;
}

}  // namespace

ScriptRunner::ScriptRunner(const wchar_t* language)
    : m_engine(CreateEngine(language)), m_site(windows::MakeCom<ScriptSite>()) {
    ThrowIfFailed(m_engine->SetScriptSite(m_site.Get()));
    ThrowIfFailed(ParserOf(*m_engine.Get())->InitNew());
}

ScriptRunner::~ScriptRunner() {
    m_engine->Close();
}

void ScriptRunner::AddItem(const wchar_t* name, IDispatch* object) {
    m_site->Items[name] = object;
    ThrowIfFailed(m_engine->AddNamedItem(name, SCRIPTITEM_ISVISIBLE));
}

std::string ScriptRunner::Run(const std::string& text) {
    m_site->Failure.clear();
    ThrowIfFailed(m_engine->SetScriptState(SCRIPTSTATE_CONNECTED));
    const std::wstring wide = windows::ToWide(text);
    const HRESULT result = ParserOf(*m_engine.Get())
                               ->ParseScriptText(wide.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                 SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
    return FAILED(result) && m_site->Failure.empty() ? windows::DescribeResult(result)
                                                     : m_site->Failure;
}

const wchar_t* ScriptRunner::LanguageOf(const std::string& file) {
    const std::string ending = file.substr(std::min(file.rfind('.'), file.size()));
    return ending == ".vbs" ? L"VBScript" : ending == ".js" ? L"JScript" : nullptr;
}

}  // namespace krv::tests
