#include "cli/TerminalMessageBoxes.h"

#include <istream>
#include <ostream>
#include <string>

#include "cli/Messages.h"
#include "common/Text.h"
#include "waveform/data/RunServices.h"

namespace krv::cli {
namespace {

const char* TitleEnd(ports::MessageIcon icon) {
    switch (icon) {
        case ports::MessageIcon::Critical:
            return " [error]";
        case ports::MessageIcon::Exclamation:
            return " [warning]";
        default:
            return "";
    }
}

Style StyleOf(ports::MessageIcon icon) {
    switch (icon) {
        case ports::MessageIcon::Critical:
            return Style::Error;
        case ports::MessageIcon::Exclamation:
            return Style::Warning;
        default:
            return Style::Plain;
    }
}

void PrintTitle(const ports::Message& message, std::ostream& err) {
    const Style style = StyleOf(message.icon);
    if (style == Style::Plain) {
        err << message.title << '\n';
    } else {
        err << style << message.title << TitleEnd(message.icon) << Style::Plain << '\n';
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

ports::MessageAnswer TerminalMessageBoxes::Show(const ports::Message& message) {
    m_progress.Erase();
    if (message.text.starts_with(waveform::DownloadComplete)) {
        // What was asked for has been done: that is a result, and no box to be looked at.
        m_console.out << WithLineFeeds(message.text) << '\n';
        m_shown.push_back({message, ports::MessageAnswer::Ok});
        return ports::MessageAnswer::Ok;
    }
    if (!IsPrinted(message)) {
        m_shown.push_back({message, ports::MessageAnswer::Yes});
        return ports::MessageAnswer::Yes;
    }
    m_console.out.flush();
    PrintTitle(message, m_console.err);
    m_console.err << WithLineFeeds(message.text) << '\n' << std::flush;
    auto answer = ports::MessageAnswer::Ok;
    switch (message.buttons) {
        case ports::MessageButtons::Ok:
            break;
        case ports::MessageButtons::YesNo:
            answer = Agrees() ? ports::MessageAnswer::Yes : ports::MessageAnswer::No;
            break;
        case ports::MessageButtons::OkCancel:
            answer = Agrees() ? ports::MessageAnswer::Ok : ports::MessageAnswer::Cancel;
            break;
        case ports::MessageButtons::RetryCancel:
            // --yes must not retry for ever.
            answer = !m_answerYes && Agrees() ? ports::MessageAnswer::Retry
                                              : ports::MessageAnswer::Cancel;
            break;
    }
    m_shown.push_back({message, answer});
    return answer;
}

bool TerminalMessageBoxes::IsPrinted(const ports::Message& message) const noexcept {
    return !m_console.isQuiet || !m_answerYes || message.icon != ports::MessageIcon::None ||
           message.buttons != ports::MessageButtons::YesNo;
}

bool TerminalMessageBoxes::Agrees() {
    if (m_answerYes) {
        m_console.err << "Answered: Yes\n" << std::flush;
        return true;
    }
    if (!m_console.canAsk) {
        m_console.err << "Answered: No (--yes answers Yes)\n" << std::flush;
        return false;
    }
    m_console.err << "[y/N] " << std::flush;
    std::string line;
    if (!std::getline(m_console.in, line)) {
        m_console.in.clear();
        m_console.err << '\n' << std::flush;
        return false;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    const auto answer = TrimBlanks(line);
    return EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
}

}  // namespace krv::cli
