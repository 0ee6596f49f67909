// AddInSession: the add-in while it is connected to its host. It keeps the command bar and the
// documents' controls as the host's events ask for. What the host refuses while it is busy is tried
// again. The host's thread.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

#include <memory>
#include <optional>
#include <string>

#include "common/Subscription.h"
#include "windows/addin/DocumentControls.h"
#include "windows/addin/GeneratorBar.h"
#include "windows/addin/HostTraits.h"
#include "windows/addin/MessageWindow.h"
#include "windows/addin/Ribbon.h"

namespace krv::windows {

class AddInSession : public std::enable_shared_from_this<AddInSession> {
 public:
    // Throws Error for a host that the add-in isn't for, or that offers no events. A host without a
    // user in front of it is quiet: nothing is shown that the add-in shows by itself.
    AddInSession(IDispatch* application, bool isQuiet);
    AddInSession(const AddInSession&) = delete;
    AddInSession& operator=(const AddInSession&) = delete;

    // From now on there are a command bar and controls: the host has started up.
    void Start();
    // Lets go of all that belongs to the host. Nothing happens afterwards.
    void End() noexcept;

    // What the host's ribbon asks.
    [[nodiscard]] std::string RibbonText() const;
    void LoadRibbon(IDispatch* ribbon);
    void ClickRibbon(IDispatch* control);
    [[nodiscard]] ButtonState StateOf(IDispatch* control) const;
    // What the command does, or why it can't be used.
    [[nodiscard]] std::string TipOf(IDispatch* control) const;
    // The caller owns it.
    [[nodiscard]] IDispatch* PictureOf(IDispatch* control) const;

    // The active document's control; null without one.
    [[nodiscard]] IDispatch* Control() const;

 private:
    void Receive(DISPID event, const DISPPARAMS& arguments);
    void BeforeSave(const DISPPARAMS& arguments);
    // Follows the host, or tries again later.
    void Work();
    void Follow();
    void Run(std::size_t command);
    // The ribbon shows what the command bar shows, and the bar only where there is no ribbon.
    void ShowStates();
    // Of the document whose window the ribbon's control lies in; null where that has no toolbar.
    [[nodiscard]] const ButtonStates* StatesFor(IDispatch* control) const;
    // Why there is no toolbar; empty where there is one.
    [[nodiscard]] std::string Trouble() const;
    // A sentence for the user, in front of the active document.
    void Tell(const std::string& text) const;

    LateBound m_application;
    const HostTraits& m_traits;
    std::optional<MessageWindow> m_messages;
    std::optional<GeneratorBar> m_bar;
    // Held by work that lets messages through, with which the connection may end.
    std::shared_ptr<DocumentControls> m_controls;
    Ribbon m_ribbon;
    std::string m_shownTrouble;
    std::unique_ptr<Subscription> m_events;
    const bool m_isQuiet;
    // How often a refusal was taken for a busy host, one after another.
    int m_refusals = 0;
    bool m_isFollowing = false;
    bool m_isEnded = false;
    // What was last written to the log, which doesn't need it twice.
    std::string m_lastTrouble;
};

}  // namespace krv::windows
