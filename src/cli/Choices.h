// Options whose value is one of some words.
#pragma once

#include <CLI/App.hpp>
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/Joined.h"
#include "common/NearMiss.h"

namespace krv::cli {

// Refuses every other word, with a suggestion where it is nearly one of them.
[[nodiscard]] inline CLI::Validator OneOf(std::vector<std::string> words) {
    const auto fault = [words = std::move(words)](const std::string& word) {
        if (std::ranges::find(words, word) != words.end()) {
            return std::string();
        }
        return '\'' + word + "' is none of: " + Joined(words) + '.' + NearMissHint(word, words);
    };
    return {fault, ""};
}

template <class Meaning>
[[nodiscard]] CLI::Validator OneOf(const std::map<std::string, Meaning>& meanings) {
    std::vector<std::string> words;
    for (const auto& [word, meaning] : meanings) {
        words.push_back(word);
    }
    return OneOf(std::move(words));
}

}  // namespace krv::cli
