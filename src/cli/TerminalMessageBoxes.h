// TerminalMessageBoxes: message boxes as text on standard error, and their questions asked there.
#pragma once

#include <vector>

#include "cli/ProgressLines.h"
#include "cli/Surroundings.h"
#include "ports/desktop/MessageBoxes.h"

namespace krv::cli {

class TerminalMessageBoxes final : public ports::MessageBoxes {
 public:
    struct ShownMessage {
        ports::Message message;
        ports::MessageAnswer answer;
    };

    // A question is answered Yes when `answerYes` says so; else a person is asked where there is
    // one, and anything but a yes is No.
    TerminalMessageBoxes(Surroundings& surroundings, ProgressLines& progress, bool answerYes)
        : m_surroundings(surroundings), m_progress(progress), m_answerYes(answerYes) {}

    ports::MessageAnswer Show(const ports::Message& message) override;

    // Every box so far, oldest first.
    [[nodiscard]] const std::vector<ShownMessage>& Shown() const noexcept { return m_shown; }

 private:
    [[nodiscard]] bool Agrees();

    Surroundings& m_surroundings;
    ProgressLines& m_progress;
    bool m_answerYes;
    std::vector<ShownMessage> m_shown;
};

}  // namespace krv::cli
