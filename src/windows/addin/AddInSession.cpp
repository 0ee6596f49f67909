#include "windows/addin/AddInSession.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "windows/addin/LoadLog.h"
#include "windows/addin/RibbonXml.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/EventSubscription.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

constexpr const wchar_t* Title = L"Tallyport for TQL/KRV";

// Ten seconds.
constexpr int MostRefusals = 20;

}  // namespace

AddInSession::AddInSession(IDispatch* application, bool isQuiet)
    : m_application(application), m_traits(TraitsOf(application)), m_isQuiet(isQuiet) {
    m_events = SubscribeToEvents(
        application, m_traits.events,
        [this](DISPID event, const DISPPARAMS& arguments) { Receive(event, arguments); });
}

void AddInSession::Start() {
    if (!m_messages) {
        m_messages.emplace([this] { Work(); });
        m_messages->Post();
    }
}

// The bar is there until the last control has left it.
void AddInSession::End() noexcept {
    m_isEnded = true;
    m_events.reset();
    m_messages.reset();
    m_controls.reset();
    m_bar.reset();
    m_ribbon = Ribbon();
    m_application = LateBound();
}

IDispatch* AddInSession::Control() const {
    const SitedControl* const active = m_controls ? m_controls->Active() : nullptr;
    return active != nullptr ? active->Control().Object() : nullptr;
}

void AddInSession::Receive(DISPID event, const DISPPARAMS& arguments) {
    if (!m_messages) {
        return;
    }
    if (event == m_traits.beforeSave) {
        BeforeSave(arguments);
    } else if (event == m_traits.beforeClose) {
        // Whether it is closed shows later.
        m_messages->PostLater();
    } else if (std::ranges::find(m_traits.changes, event) != m_traits.changes.end()) {
        m_messages->Post();
    }
}

// Hosts save by themselves, too: nothing happens then unless something has changed.
void AddInSession::BeforeSave(const DISPPARAMS& arguments) {
    const VARIANT* const document = EventArgument(arguments, 0);
    if (document == nullptr || !m_controls) {
        return;
    }
    const auto failure = FailureOf([&] {
        _variant_t direct;
        ThrowIfFailed(VariantCopyInd(&direct, const_cast<VARIANT*>(document)));
        m_controls->KeepIn(LateBound(direct).Object());
    });
    if (failure) {
        WriteToLog("The toolbar's settings weren't saved.  " + failure->Description());
    }
}

void AddInSession::Work() {
    const auto alive = shared_from_this();
    const auto failure = FailureOf([this] { Follow(); });
    if (const std::string notice = m_controls ? m_controls->TakeNotice() : ""; !notice.empty()) {
        WriteToLog(notice);
        if (!m_isQuiet) {
            Tell(notice);
        }
    }
    if (!failure || m_isEnded) {
        return;
    }
    if (IsBusy(*failure) || (MayBeBusy(*failure) && ++m_refusals < MostRefusals)) {
        m_messages->PostLater();
    } else if (m_lastTrouble != failure->Description()) {
        m_lastTrouble = failure->Description();
        WriteToLog(m_lastTrouble);
        m_shownTrouble = m_lastTrouble;
        m_ribbon.Invalidate();
    }
}

// Starting a control lets messages through, and with them this again.
void AddInSession::Follow() {
    if (m_isFollowing) {
        m_messages->PostLater();
        return;
    }
    m_isFollowing = true;
    const ScopeExit done([this] { m_isFollowing = false; });
    if (!m_bar) {
        m_bar.emplace(m_application, m_traits, [this](std::size_t command) { Run(command); });
    }
    if (!m_controls) {
        m_controls = std::make_shared<DocumentControls>(m_application, m_traits, [this] {
            if (m_messages) {
                m_messages->Post();
            }
        });
    }
    const auto controls = m_controls;
    controls->Follow();
    if (!m_isEnded) {
        controls->Keep();
        m_lastTrouble.clear();
        m_refusals = 0;
        ShowStates();
    }
}

void AddInSession::ShowStates() {
    m_bar->Show(!m_ribbon.IsLoaded());
    const bool isNew = m_controls->NoteStates(m_bar->States());
    const std::string trouble = Trouble();
    if (std::exchange(m_shownTrouble, trouble) != trouble || isNew) {
        m_ribbon.Invalidate();
    }
}

std::string AddInSession::Trouble() const {
    if (m_controls && m_controls->Active() != nullptr) {
        return {};
    }
    return m_lastTrouble.empty() ? "Open a document first." : m_lastTrouble;
}

std::string AddInSession::RibbonText() const {
    double version = 0;
    TrapErrors([&] { version = std::stod(m_application.GetText(L"Version")); });
    return RibbonXml(version == 0 || version >= 14);
}

void AddInSession::LoadRibbon(IDispatch* ribbon) {
    m_ribbon.Load(ribbon);
    if (m_messages) {
        m_messages->Post();
    }
}

void AddInSession::ClickRibbon(IDispatch* control) {
    Run(CommandOf(control));
}

const ButtonStates* AddInSession::StatesFor(IDispatch* control) const {
    const ButtonStates* states = nullptr;
    TrapErrors([&] {
        const LateBound window = LateBound(control).GetObject(L"Context");
        states = m_controls && window ? m_controls->StatesIn(window) : nullptr;
    });
    return states;
}

// Without a toolbar nothing can be used.
ButtonState AddInSession::StateOf(IDispatch* control) const {
    const std::size_t command = CommandOf(control);
    const ButtonStates* const states = StatesFor(control);
    if (states != nullptr && !(*states)[command].caption.empty()) {
        return (*states)[command];
    }
    const std::string caption = Commands[command].caption;
    return {false, caption != "Connected", caption, caption};
}

std::string AddInSession::TipOf(IDispatch* control) const {
    const std::size_t command = CommandOf(control);
    const ButtonStates* const states = StatesFor(control);
    return states != nullptr ? SupertipOf(*states, command) : Trouble();
}

IDispatch* AddInSession::PictureOf(IDispatch* control) const {
    return NewCommandPicture(CommandOf(control), ActiveWindowOf(m_application, m_traits));
}

void AddInSession::Run(std::size_t command) {
    const auto alive = shared_from_this();
    const SitedControl* const control = m_controls ? m_controls->Active() : nullptr;
    if (control == nullptr) {
        Tell(Trouble());
        return;
    }
    const auto failure = FailureOf([&] { control->Run(Commands[command]); });
    if (m_messages) {
        // What the command has changed.
        m_messages->Post();
    }
    if (!failure) {
        return;
    }
    Tell(IsBusy(*failure) ? std::string(m_traits.name) +
                                " is busy.  Finish what it is doing (a cell that is being edited, "
                                "an open dialog), and try again."
                          : failure->Description());
}

void AddInSession::Tell(const std::string& text) const {
    HWND window = nullptr;
    TrapErrors([&] { window = ActiveWindowOf(m_application, m_traits); });
    MessageBoxW(window, ToWide(text).c_str(), Title, MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace krv::windows
