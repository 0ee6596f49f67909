#include "cli/TerminalMessageBoxes.h"

#include <istream>
#include <ostream>
#include <string>

#include "common/Text.h"

namespace krv::cli {
namespace {

const char* TitleEnd(desktop::MessageIcon icon) {
    switch (icon) {
        case desktop::MessageIcon::Critical:
            return " [error]\n";
        case desktop::MessageIcon::Exclamation:
            return " [warning]\n";
        default:
            return "\n";
    }
}

std::string WithLineFeeds(const std::string& text) {
    std::string lines;
    for (const char character : text) {
        if (character != '\r') {
            lines += character;
        }
    }
    return lines;
}

}  // namespace

desktop::MessageAnswer TerminalMessageBoxes::Show(const desktop::Message& message) {
    m_progress.Erase();
    m_surroundings.out.flush();
    m_surroundings.err << message.title << TitleEnd(message.icon) << WithLineFeeds(message.text)
                       << '\n'
                       << std::flush;
    auto answer = desktop::MessageAnswer::Ok;
    switch (message.buttons) {
        case desktop::MessageButtons::Ok:
            break;
        case desktop::MessageButtons::YesNo:
            answer = Agrees() ? desktop::MessageAnswer::Yes : desktop::MessageAnswer::No;
            break;
        case desktop::MessageButtons::OkCancel:
            answer = Agrees() ? desktop::MessageAnswer::Ok : desktop::MessageAnswer::Cancel;
            break;
        case desktop::MessageButtons::RetryCancel:
            // --yes must not retry for ever.
            answer = !m_answerYes && Agrees() ? desktop::MessageAnswer::Retry
                                              : desktop::MessageAnswer::Cancel;
            break;
    }
    m_shown.push_back({message, answer});
    return answer;
}

bool TerminalMessageBoxes::Agrees() {
    if (m_answerYes) {
        m_surroundings.err << "Answered: Yes\n" << std::flush;
        return true;
    }
    if (!m_surroundings.canAsk) {
        m_surroundings.err << "Answered: No (--yes answers Yes)\n" << std::flush;
        return false;
    }
    m_surroundings.err << "[y/N] " << std::flush;
    std::string line;
    if (!std::getline(m_surroundings.in, line)) {
        m_surroundings.in.clear();
        m_surroundings.err << '\n' << std::flush;
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    const auto answer = TrimBlanks(line);
    return EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
}

}  // namespace krv::cli
