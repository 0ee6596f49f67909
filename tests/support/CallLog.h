// CallLog: what several doubles were asked, one line a call, in the order of the calls. The call
// whose line starts with FailAt fails.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "common/Error.h"

namespace krv::tests {

class CallLog {
 public:
    std::string FailAt;
    // Called with each line; may be none.
    std::function<void(const std::string&)> OnNote;

    void Note(const std::string& line) {
        m_lines.push_back(line);
        if (OnNote) {
            OnNote(line);
        }
        if (!FailAt.empty() && line.starts_with(FailAt)) {
            throw Error(ErrorNumber::Unspecified, "refused: " + line);
        }
    }
    // The lines since the last time, joined by "; ".
    std::string Take() {
        std::string text;
        for (const std::string& line : std::exchange(m_lines, {})) {
            text += (text.empty() ? "" : "; ") + line;
        }
        return text;
    }

 private:
    std::vector<std::string> m_lines;
};

}  // namespace krv::tests
