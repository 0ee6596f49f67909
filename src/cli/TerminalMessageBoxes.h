// TerminalMessageBoxes: message boxes as text on standard error, and their questions asked there.
// Only the message that a download is complete goes to standard output.
#pragma once

#include <vector>

#include "cli/Console.h"
#include "cli/ProgressLines.h"
#include "ports/desktop/MessageBoxes.h"

namespace krv::cli {

class TerminalMessageBoxes final : public ports::MessageBoxes {
 public:
    struct ShownMessage {
        ports::Message message;
        ports::MessageAnswer answer;
    };

    // Answers every question with Yes when `answerYes` is true. Otherwise it asks the person at the
    // terminal, where any input but a yes is No; without a person the answer is No.
    TerminalMessageBoxes(Console& console, ProgressLines& progress, bool answerYes)
        : m_console(console), m_progress(progress), m_answerYes(answerYes) {}

    ports::MessageAnswer Show(const ports::Message& message) override;

    // Every box so far, oldest first.
    [[nodiscard]] const std::vector<ShownMessage>& Shown() const noexcept { return m_shown; }
    // The answer to the last one ended what was going on: nothing has come behind it.
    [[nodiscard]] bool EndWithNo() const noexcept {
        return !m_shown.empty() && m_shown.back().answer == ports::MessageAnswer::No;
    }

 private:
    // A question that nobody is to answer and that warns of nothing isn't printed where the command
    // is quiet.
    [[nodiscard]] bool IsPrinted(const ports::Message& message) const noexcept;
    [[nodiscard]] bool Agrees();

    Console& m_console;
    ProgressLines& m_progress;
    bool m_answerYes;
    std::vector<ShownMessage> m_shown;
};

}  // namespace krv::cli
