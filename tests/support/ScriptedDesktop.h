// ScriptedDesktop: every desktop service as a double, with answers that the test gives beforehand.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ports/desktop/Desktop.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/ScriptedScreen.h"

namespace krv::tests {

// Records each box as one line: "[icon] title: text (buttons)", line breaks in the text as " | ".
class ScriptedMessageBoxes final : public ports::MessageBoxes {
 public:
    // None where no form is shown.
    explicit ScriptedMessageBoxes(ScriptedScreen* screen = nullptr) : m_screen(screen) {}

    std::vector<std::string> Shown;
    // Answers in order; without one, the first button is pressed.
    std::deque<ports::MessageAnswer> Answers;
    // Called with the line of each box, while it is open.
    std::function<void(const std::string&)> OnShow;

    // What was shown since it was last asked, one box a line.
    std::string TakeShown() {
        std::string text;
        for (const std::string& box : std::exchange(Shown, {})) {
            text += box + '\n';
        }
        return text;
    }
    ports::MessageAnswer Show(const ports::Message& message) override {
        Shown.push_back(Describe(message));
        if (OnShow && m_screen != nullptr) {
            m_screen->UnderABox([&] { OnShow(Shown.back()); });
        } else if (OnShow) {
            OnShow(Shown.back());
        }
        if (!Answers.empty()) {
            const auto answer = Answers.front();
            Answers.pop_front();
            return answer;
        }
        switch (message.buttons) {
            case ports::MessageButtons::YesNo:
                return ports::MessageAnswer::Yes;
            case ports::MessageButtons::RetryCancel:
                return ports::MessageAnswer::Retry;
            default:
                return ports::MessageAnswer::Ok;
        }
    }

 private:
    ScriptedScreen* m_screen;

    static std::string Describe(const ports::Message& message) {
        constexpr std::array<const char*, 3> icons{"", "[stop] ", "[!] "};
        constexpr std::array<const char*, 4> buttons{"OK", "OK/Cancel", "Yes/No", "Retry/Cancel"};
        std::string text = message.text;
        for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n")) {
            text.replace(at, 2, " | ");
        }
        return icons.at(static_cast<std::size_t>(message.icon)) + message.title + ": " + text +
               " (" + buttons.at(static_cast<std::size_t>(message.buttons)) + ')';
    }
};

class ScriptedFileDialogs final : public ports::FileDialogs {
 public:
    std::vector<ports::FileDialogRequest> Requests;
    // The path chosen next; nothing cancels the dialog.
    std::optional<std::string> Choice;

    std::optional<std::string> ChooseFileToOpen(const ports::FileDialogRequest& request) override {
        Requests.push_back(request);
        return Choice;
    }
    std::optional<std::string> ChooseFileToSave(const ports::FileDialogRequest& request) override {
        Requests.push_back(request);
        return Choice;
    }
};

// A clock that stands still, or goes on by StepMs at each reading of the tick count.
class ManualClock final : public ports::Clock {
 public:
    std::uint64_t NowMs = 1000;
    std::uint64_t StepMs = 0;
    int SecondOfDay = 12 * 3600;

    std::uint64_t TickCountMs() override { return NowMs += StepMs; }
    int LocalSecondOfDay() override { return SecondOfDay; }
};

class ScriptedDesktop {
 public:
    ScriptedScreen Screen;
    ScriptedMessageBoxes MessageBoxes{&Screen};
    ScriptedFileDialogs FileDialogs;
    ManualClock Clock;
    MemoryFiles Files;
    NumberFormat Format;

    [[nodiscard]] ports::Desktop Services() {
        return {Screen, MessageBoxes, FileDialogs, Screen, Clock, Files, Format};
    }
};

}  // namespace krv::tests
