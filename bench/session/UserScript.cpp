#include "bench/session/UserScript.h"

#include <utility>

#include "common/Error.h"

namespace krv::bench {
namespace {

[[noreturn]] void Fail(std::size_t line, const std::string& problem) {
    throw Error(ErrorNumber::InvalidFileFormat, "line " + std::to_string(line) + ": " + problem);
}

bool IsBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r';
}

// One line's words, taken from the front.
class Words {
 public:
    Words(std::string_view rest, std::size_t line) : m_rest(rest), m_line(line) {}

    bool Next(std::string& word) {
        while (!m_rest.empty() && IsBlank(m_rest.front())) {
            m_rest.remove_prefix(1);
        }
        if (m_rest.empty()) {
            return false;
        }
        word = m_rest.front() == '"' ? Quoted() : Plain();
        return true;
    }

 private:
    std::string Plain() {
        std::size_t length = 0;
        while (length < m_rest.size() && !IsBlank(m_rest[length])) {
            ++length;
        }
        std::string word(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        return word;
    }

    std::string Quoted() {
        const auto end = m_rest.find('"', 1);
        if (end == std::string_view::npos) {
            Fail(m_line, "a quote isn't closed");
        }
        std::string word(m_rest.substr(1, end - 1));
        m_rest.remove_prefix(end + 1);
        for (auto at = word.find("\\n"); at != std::string::npos; at = word.find("\\n", at)) {
            word.replace(at, 2, "\n");
        }
        return word;
    }

    std::string_view m_rest;
    std::size_t m_line;
};

bool IsOfName(char character) {
    return (character >= 'A' && character <= 'Z') || character == '_';
}

// A $ without a name stays: cells have addresses such as $A$1:$A$9.
std::string Filled(const std::string& word, const ScriptValues& values, std::size_t line) {
    std::string filled;
    for (std::size_t at = 0; at < word.size();) {
        std::size_t end = at + 1;
        while (word[at] == '$' && end < word.size() && IsOfName(word[end])) {
            ++end;
        }
        if (end - at < 3) {
            filled += word[at++];
            continue;
        }
        const std::string name = word.substr(at + 1, end - at - 1);
        const auto value = values.find(name);
        if (value == values.end()) {
            Fail(line, "no value is given for $" + name);
        }
        filled += value->second;
        at = end;
    }
    return filled;
}

}  // namespace

std::vector<UserStep> ReadUserScript(std::string_view text, const ScriptValues& values) {
    std::vector<UserStep> steps;
    std::size_t line = 0;
    while (!text.empty()) {
        ++line;
        const auto end = text.find('\n');
        Words words(text.substr(0, end), line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        UserStep step{line, {}};
        for (std::string word; words.Next(word);) {
            if (step.words.empty() && word.rfind('#', 0) == 0) {
                break;
            }
            step.words.push_back(Filled(word, values, line));
        }
        if (!step.words.empty()) {
            steps.push_back(std::move(step));
        }
    }
    return steps;
}

}  // namespace krv::bench
