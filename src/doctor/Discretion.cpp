#include "doctor/Discretion.h"

#include <cstddef>
#include <regex>

namespace krv::doctor {
namespace {

constexpr const char* LeftOut = "(left out)";

std::string Replaced(std::string text, const std::string& part) {
    const std::string leftOut = LeftOut;
    for (std::size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + leftOut.size())) {
        text.replace(at, part.size(), leftOut);
    }
    return text;
}

// A path ends at the line's end or at a character that names don't have; its last name stays.
std::string WithoutFolders(const std::string& text) {
    static const std::regex windows(R"((?:[A-Za-z]:|\\\\?)\\[^\n"<>|:*?]*\\)");
    static const std::regex posix(R"((^|[\s"'(=])/[^\n":]*/)");
    const std::string first = std::regex_replace(text, windows, "...\\");
    return std::regex_replace(first, posix, "$1.../");
}

std::string WithoutUsbNumbers(const std::string& text) {
    static const std::regex resource(R"((USB\d*::[^:\s]+::[^:\s]+::)[^:\s]+)", std::regex::icase);
    return std::regex_replace(text, resource, std::string("$1") + LeftOut);
}

}  // namespace

std::string WithoutPrivateParts(const std::string& text,
                                const std::vector<std::string>& serialNumbers) {
    std::string discreet = WithoutUsbNumbers(WithoutFolders(text));
    for (const std::string& number : serialNumbers) {
        if (!number.empty()) {
            discreet = Replaced(discreet, number);
        }
    }
    return discreet;
}

}  // namespace krv::doctor
