// What the commands print for programs: one JSON object, in English and with the same keys in every
// version.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace krv::cli {

// Keys stay in the order they are written.
using OutputJson = nlohmann::ordered_json;

// A file name or an instrument's text may be no UTF-8: what isn't becomes U+FFFD. Control
// characters are written as JSON has them, DEL and those behind it, too: they stand in texts only.
[[nodiscard]] std::string AsText(const OutputJson& json);

inline void PrintJson(const OutputJson& json, std::ostream& out) {
    out << AsText(json);
}

// What a command tells of its work: text for people, or one object for a program.
class CommandOutput {
 public:
    CommandOutput(std::ostream& out, bool isForProgram)
        : m_out(out), m_isForProgram(isForProgram) {}

    [[nodiscard]] std::ostream& Text() noexcept { return m_isForProgram ? m_nothing : m_out; }
    // What the object holds.
    [[nodiscard]] OutputJson& operator[](const char* key) { return m_json[key]; }
    [[nodiscard]] std::string JsonText() const { return AsText(m_json); }
    // When the command has succeeded.
    void Finish() const {
        if (m_isForProgram) {
            PrintJson(m_json, m_out);
        }
    }

 private:
    std::ostream& m_out;
    bool m_isForProgram;
    std::ostream m_nothing{nullptr};
    OutputJson m_json = OutputJson::object();
};

// Null for an empty text.
[[nodiscard]] inline OutputJson TextOrNull(const std::string& text) {
    return text.empty() ? OutputJson(nullptr) : OutputJson(text);
}

}  // namespace krv::cli
