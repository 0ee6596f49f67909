#include "windows/addin/AddIn.h"

#include <cstdint>
#include <string>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/addin/LoadLog.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Variants.h"

namespace krv::windows {
namespace {

constexpr const char* Source = "KRVAddIn";

// A host shows the user nothing of what a call of its own brought about.
template <class Body>
HRESULT Logged(const char* call, Body&& body) noexcept {
    return Guarded(__uuidof(IKRVAddIn), Source, [&] {
        try {
            body();
        } catch (const std::exception& error) {
            WriteToLog(std::string(call) + " failed: " + error.what());
            throw;
        }
    });
}

// The first element says who has started the host: 1 the user, 2 embedding, 3 automation.
bool IsForAutomation(SAFEARRAY** custom) {
    constexpr std::int32_t ByAutomation = 3;
    _variant_t first;
    LONG lowest = 0;
    if (custom == nullptr || *custom == nullptr ||
        FAILED(SafeArrayGetLBound(*custom, 1, &lowest)) ||
        FAILED(SafeArrayGetElement(*custom, &lowest, &first))) {
        return false;
    }
    std::int32_t startedBy = 0;
    TrapErrors([&] { startedBy = LongOf(first); });
    return startedBy == ByAutomation;
}

VARIANT_BOOL AsFlag(bool flag) {
    return flag ? VARIANT_TRUE : VARIANT_FALSE;
}

}  // namespace

AddIn::~AddIn() {
    if (m_session) {
        m_session->End();
    }
}

// A host that has started up says nothing more.
HRESULT AddIn::OnConnection(IDispatch* application, ConnectMode mode, IDispatch* addIn,
                            SAFEARRAY** custom) {
    return Logged("Connecting to the application", [&] {
        if (m_session) {
            m_session->End();
        }
        m_session = std::make_shared<AddInSession>(application, IsForAutomation(custom));
        TrapErrors([&] { LateBound(addIn).PutObject(L"Object", static_cast<IKRVAddIn*>(this)); });
        if (mode != ConnectMode::Startup) {
            m_session->Start();
        }
    });
}

HRESULT AddIn::OnDisconnection(DisconnectMode, SAFEARRAY**) {
    if (const auto session = std::exchange(m_session, nullptr)) {
        session->End();
    }
    return S_OK;
}

HRESULT AddIn::OnAddInsUpdate(SAFEARRAY**) {
    return S_OK;
}

HRESULT AddIn::OnStartupComplete(SAFEARRAY**) {
    return Logged("Starting", [this] {
        if (m_session) {
            m_session->Start();
        }
    });
}

HRESULT AddIn::OnBeginShutdown(SAFEARRAY**) {
    return S_OK;
}

// A ribbon of another kind, a mail's say, isn't ours.
HRESULT AddIn::GetCustomUI(BSTR ribbonId, BSTR* xml) {
    return Answer(xml, [&] {
        const std::string id = TextOf(ribbonId);
        const bool isOurs = id == "Microsoft.Excel.Workbook" || id == "Microsoft.Word.Document";
        return isOurs ? NewText(m_session->RibbonText()) : nullptr;
    });
}

template <class Result, class Work>
HRESULT AddIn::Answer(Result* result, Work&& work) noexcept {
    if (result == nullptr) {
        return E_POINTER;
    }
    *result = Result{};
    if (!m_session) {
        return E_UNEXPECTED;
    }
    return Guarded(__uuidof(IKRVAddIn), Source, [&] { *result = work(); });
}

HRESULT AddIn::OnRibbonLoad(IDispatch* ribbon) {
    return Logged("Loading the ribbon", [&] {
        if (m_session) {
            m_session->LoadRibbon(ribbon);
        }
    });
}

HRESULT AddIn::OnCommand(IDispatch* control) {
    return Logged("A command", [&] {
        // It may end the connection to the host.
        if (const auto session = m_session) {
            session->ClickRibbon(control);
        }
    });
}

HRESULT AddIn::GetLabel(IDispatch* control, BSTR* label) {
    return Answer(label, [&] { return NewText(m_session->StateOf(control).caption); });
}

HRESULT AddIn::GetEnabled(IDispatch* control, VARIANT_BOOL* isEnabled) {
    return Answer(isEnabled, [&] { return AsFlag(m_session->StateOf(control).isEnabled); });
}

HRESULT AddIn::GetVisible(IDispatch* control, VARIANT_BOOL* isVisible) {
    return Answer(isVisible, [&] { return AsFlag(m_session->StateOf(control).isVisible); });
}

HRESULT AddIn::GetSupertip(IDispatch* control, BSTR* text) {
    return Answer(text, [&] { return NewText(m_session->TipOf(control)); });
}

HRESULT AddIn::GetImage(IDispatch* control, IDispatch** picture) {
    return Answer(picture, [&] { return m_session->PictureOf(control); });
}

HRESULT AddIn::get_Control(IDispatch** control) {
    return Answer(control, [this] {
        IDispatch* const active = m_session->Control();
        if (active != nullptr) {
            active->AddRef();
        }
        return active;
    });
}

}  // namespace krv::windows
