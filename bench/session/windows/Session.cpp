#include "bench/session/windows/Session.h"

#include <map>
#include <utility>

#include "bench/session/windows/ScreenPicture.h"
#include "bench/session/windows/UserDesktop.h"

namespace krv::bench {
namespace {

const std::map<std::string_view, WPARAM> Keys{
    {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Tab", VK_TAB},    {"F1", VK_F1},
    {"Up", VK_UP},        {"Down", VK_DOWN},     {"Space", VK_SPACE}};

// A button under the pointer would look pressed or chosen in the pictures.
void PutPointerAside() {
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
}

}  // namespace

const std::vector<Session::Verb>& Session::Verbs() {
    static const std::vector<Verb> verbs{
        {"say", 1, "TEXT              tells whoever watches", &Session::Say},
        {"window", 1, "CAPTION        waits for a window, in which the following steps happen",
         &Session::Window},
        {"message", 1, "TEXT          waits for a message box whose text contains this",
         &Session::Message},
        {"click", 1, "PART            clicks a button, by its name or its caption",
         &Session::Click},
        {"type", 2, "PART TEXT        replaces what stands in a box", &Session::Type},
        {"choose", 2, "PART ENTRY     chooses from a list", &Session::Choose},
        {"tick", 1, "PART             sets a check mark", &Session::Tick},
        {"untick", 1, "PART           takes it away", &Session::Untick},
        {"press", 1, "KEY             presses a key: Enter, Escape, Tab, F1, Up, Down, Space",
         &Session::Press},
        {"menu", 2, "MENU ENTRY      chooses from the menu, by the underlined characters",
         &Session::Menu},
        {"expect", 2, "PART TEXT      waits until a part shows this text", &Session::Expect},
        {"closed", 1, "CAPTION        waits until no window has this caption", &Session::Closed},
        {"close", 0, "                closes the window by its corner", &Session::Close},
        {"picture", 1, "NAME          takes a picture of the window: NAME.png", &Session::Picture}};
    return verbs;
}

Session::Session(std::string pictureFolder, Report report)
    : m_pictureFolder(std::move(pictureFolder)), m_report(std::move(report)) {}

void Session::Run(const std::vector<SessionStep>& steps) {
    if (!m_pictureFolder.empty()) {
        PutPointerAside();
    }
    for (const SessionStep& step : steps) {
        try {
            RunStep(step);
        } catch (const SessionError& error) {
            throw SessionError("line " + std::to_string(step.line) + ": " + error.what());
        }
    }
}

void Session::RunStep(const SessionStep& step) {
    for (const Verb& verb : Verbs()) {
        if (verb.name == step.words.front() && verb.words == step.words.size() - 1) {
            (this->*verb.run)(step.words);
            return;
        }
    }
    throw SessionError("There is no step \"" + step.words.front() + "\" with " +
                       std::to_string(step.words.size() - 1) + " words.");
}

std::string Session::Help() {
    std::string help;
    for (const Verb& verb : Verbs()) {
        help += "  " + std::string(verb.name) + " " + std::string(verb.help) + "\n";
    }
    return help;
}

void Session::Say(const Words& words) {
    m_report(words[1]);
}

void Session::Window(const Words& words) {
    m_window = WindowOf(words[1]);
}

void Session::Message(const Words& words) {
    m_window = MessageBoxOf(words[1]);
}

void Session::Click(const Words& words) {
    m_window.Part(words[1]).Click();
    if (m_window.IsMessageBox()) {
        m_window.ExpectGone();
    }
}

void Session::Type(const Words& words) {
    m_window.Part(words[1]).Type(words[2]);
}

void Session::Choose(const Words& words) {
    m_window.Part(words[1]).Choose(words[2]);
}

void Session::Tick(const Words& words) {
    m_window.Part(words[1]).Tick(true);
}

void Session::Untick(const Words& words) {
    m_window.Part(words[1]).Tick(false);
}

void Session::Press(const Words& words) {
    const auto key = Keys.find(words[1]);
    if (key == Keys.end()) {
        throw SessionError("There is no key \"" + words[1] + "\".");
    }
    m_window.Press(key->second);
}

void Session::Menu(const Words& words) {
    m_window.ChooseFromMenu(words[1].front(), words[2].front());
}

void Session::Expect(const Words& words) {
    m_window.Part(words[1]).Expect(words[2]);
}

void Session::Closed(const Words& words) {
    const bool isGone = WaitUntil([&] {
        for (const UserWindow& window : TopWindows()) {
            if (window.Text() == words[1]) {
                return false;
            }
        }
        return true;
    });
    if (!isGone) {
        throw SessionError("The window \"" + words[1] + "\" is still there.");
    }
}

void Session::Close(const Words&) {
    m_window.Close();
    m_window.ExpectGone();
}

void Session::Picture(const Words& words) {
    if (!m_pictureFolder.empty()) {
        SavePicture(m_window.Handle(), m_pictureFolder + "/" + words[1] + ".png");
    }
}

}  // namespace krv::bench
