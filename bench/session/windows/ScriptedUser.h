// ScriptedUser: goes through the steps of a script, as a user in front of the screen does. The
// steps that there are stand in the table in ScriptedUser.cpp; docs/development.md tells how to
// write them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/session/UserScript.h"
#include "bench/session/windows/UserWindow.h"

namespace krv::bench {

class ScriptedUser {
 public:
    using Report = std::function<void(const std::string& line)>;

    // Pictures go into the folder; without one none are taken. What is said is reported at once.
    ScriptedUser(std::string pictureFolder, Report report);

    // Throws UserError, which names the line, at the first step that fails.
    void Play(const std::vector<UserStep>& steps);

    [[nodiscard]] static std::string Help();

 private:
    struct Verb {
        std::string_view name;
        // The number of words behind the verb.
        std::size_t words;
        std::string_view help;
        void (*run)(ScriptedUser& user, const std::string& first, const std::string& second);
    };
    static const std::vector<Verb>& Verbs();

    void Take(const UserStep& step);
    void Click(const std::string& part) const;
    void Press(const std::string& key) const;
    void TakePicture(const std::string& name) const;

    std::string m_pictureFolder;
    Report m_report;
    // The window that the user works in.
    UserWindow m_window;
};

}  // namespace krv::bench
