#include "bench/session/windows/ScriptedUser.h"

#include <charconv>
#include <map>
#include <system_error>
#include <utility>

#include "bench/session/windows/ScreenPicture.h"
#include "bench/session/windows/UserDesktop.h"

namespace krv::bench {
namespace {

const std::map<std::string_view, WPARAM> Keys{
    {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"Tab", VK_TAB}, {"F1", VK_F1}, {"Up", VK_UP}};

// A button under the pointer would look pressed or chosen in the pictures.
void PutPointerAside() {
    SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
}

int PixelsIn(const std::string& word) {
    int pixels = 0;
    const char* const end = word.data() + word.size();
    if (const auto [rest, error] = std::from_chars(word.data(), end, pixels);
        rest != end || error != std::errc() || pixels <= 0) {
        throw UserError("\"" + word + "\" is no number of pixels.");
    }
    return pixels;
}

}  // namespace

const std::vector<ScriptedUser::Verb>& ScriptedUser::Verbs() {
    using User = ScriptedUser;
    using Word = const std::string;
    static const std::vector<Verb> verbs{
        {"say", 1, "TEXT              is shown to those who watch",
         [](User& user, Word& text, Word&) { user.m_report(text); }},
        {"window", 1, "CAPTION        waits for a window, in which the following steps happen",
         [](User& user, Word& caption, Word&) { user.m_window = WindowOf(caption); }},
        {"message", 1, "TEXT          waits for a message box whose text contains this",
         [](User& user, Word& text, Word&) { user.m_window = MessageBoxOf(text); }},
        {"click", 1, "PART            clicks a button, by its name or its caption",
         [](User& user, Word& part, Word&) { user.Click(part); }},
        {"type", 2, "PART TEXT        replaces what stands in a box",
         [](User& user, Word& part, Word& text) { user.m_window.Part(part).Type(text); }},
        {"tick", 1, "PART             sets a check mark",
         [](User& user, Word& part, Word&) { user.m_window.Part(part).Tick(true); }},
        {"untick", 1, "PART           takes it away",
         [](User& user, Word& part, Word&) { user.m_window.Part(part).Tick(false); }},
        {"press", 1, "KEY             presses a key: Enter, Escape, Tab, F1, Up",
         [](User& user, Word& key, Word&) { user.Press(key); }},
        {"menu", 2, "MENU ENTRY      chooses from the menu, by the underlined characters",
         [](User& user, Word& menu, Word& entry) {
             user.m_window.ChooseFromMenu(menu.front(), entry.front());
         }},
        {"expect", 2, "PART TEXT      waits until a part shows this text",
         [](User& user, Word& part, Word& text) { user.m_window.Part(part).Expect(text); }},
        {"closed", 1, "CAPTION        waits until no window has this caption",
         [](User&, Word& caption, Word&) { ExpectNoWindow(caption); }},
        {"size", 2, "WIDTH HEIGHT     makes the window so large, in pixels",
         [](User& user, Word& width, Word& height) {
             user.m_window.Resize(PixelsIn(width), PixelsIn(height));
         }},
        {"close", 0, "                closes the window by its corner",
         [](User& user, Word&, Word&) {
             user.m_window.Close();
             user.m_window.ExpectGone();
         }},
        {"picture", 1, "NAME          takes a picture of the window: NAME.png",
         [](User& user, Word& name, Word&) { user.TakePicture(name); }}};
    return verbs;
}

ScriptedUser::ScriptedUser(std::string pictureFolder, Report report)
    : m_pictureFolder(std::move(pictureFolder)), m_report(std::move(report)) {}

void ScriptedUser::Play(const std::vector<UserStep>& steps) {
    if (!m_pictureFolder.empty()) {
        PutPointerAside();
    }
    for (const UserStep& step : steps) {
        try {
            Take(step);
        } catch (const UserError& error) {
            throw UserError("line " + std::to_string(step.line) + ": " + error.what());
        }
    }
}

void ScriptedUser::Take(const UserStep& step) {
    const std::vector<std::string>& words = step.words;
    const auto word = [&](std::size_t index) {
        return index < words.size() ? words[index] : std::string();
    };
    for (const Verb& verb : Verbs()) {
        if (verb.name == words.front() && verb.words == words.size() - 1) {
            verb.run(*this, word(1), word(2));
            return;
        }
    }
    throw UserError("There is no step \"" + words.front() + "\" with " +
                    std::to_string(words.size() - 1) + " words.");
}

std::string ScriptedUser::Help() {
    std::string help;
    for (const Verb& verb : Verbs()) {
        help += "  " + std::string(verb.name) + " " + std::string(verb.help) + "\n";
    }
    return help;
}

void ScriptedUser::Click(const std::string& part) const {
    m_window.Part(part).Click();
    if (m_window.IsMessageBox()) {
        m_window.ExpectGone();
    }
}

void ScriptedUser::Press(const std::string& key) const {
    const auto found = Keys.find(key);
    if (found == Keys.end()) {
        throw UserError("There is no key \"" + key + "\".");
    }
    m_window.Press(found->second);
}

void ScriptedUser::TakePicture(const std::string& name) const {
    if (!m_pictureFolder.empty()) {
        SavePicture(m_window.Handle(), m_pictureFolder + "/" + name + ".png");
    }
}

}  // namespace krv::bench
