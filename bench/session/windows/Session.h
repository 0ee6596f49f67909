// Session: goes through the steps of a session, as a user in front of the screen does. The steps
// that there are stand in the table in Session.cpp; docs/development.md says how to write them.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "bench/session/SessionScript.h"
#include "bench/session/windows/UserWindow.h"

namespace krv::bench {

class Session {
 public:
    using Report = std::function<void(const std::string& line)>;

    // Pictures go into the folder; without one none are taken. What is said is reported at once.
    Session(std::string pictureFolder, Report report);

    // Throws SessionError, which names the line, at the first step that fails.
    void Run(const std::vector<SessionStep>& steps);

    [[nodiscard]] static std::string Help();

 private:
    using Words = std::vector<std::string>;
    struct Verb {
        std::string_view name;
        // Besides the verb.
        std::size_t words;
        std::string_view help;
        void (Session::*run)(const Words& words);
    };
    static const std::vector<Verb>& Verbs();

    void RunStep(const SessionStep& step);
    void Say(const Words& words);
    void Window(const Words& words);
    void Message(const Words& words);
    void Click(const Words& words);
    void Type(const Words& words);
    void Choose(const Words& words);
    void Tick(const Words& words);
    void Untick(const Words& words);
    void Press(const Words& words);
    void Menu(const Words& words);
    void Expect(const Words& words);
    void Closed(const Words& words);
    void Close(const Words& words);
    void Picture(const Words& words);

    std::string m_pictureFolder;
    Report m_report;
    // What the user works in.
    UserWindow m_window;
};

}  // namespace krv::bench
