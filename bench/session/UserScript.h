// The language in which a user's steps with windows are written down, in files *.session: one step
// a line, words apart by blanks, in quotes where they hold blanks. Empty lines and lines that begin
// with # say nothing. \n in quotes is a line break, $NAME stands for a value that is given at the
// start.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

struct UserStep {
    // From 1.
    std::size_t line = 0;
    // The verb and what it is applied to; never empty.
    std::vector<std::string> words;
};

using ScriptValues = std::map<std::string, std::string>;

// Throws Error, naming the line, for a quote that isn't closed and for a value that isn't given.
[[nodiscard]] std::vector<UserStep> ReadUserScript(std::string_view text,
                                                   const ScriptValues& values);

}  // namespace krv::bench
