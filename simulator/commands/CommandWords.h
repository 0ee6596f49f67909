// Settings that are a choice of words, each with a short and a long form as in "IMMediate".
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/Joined.h"
#include "simulator/scpi/AsciiCase.h"
#include "simulator/scpi/HeaderPattern.h"
#include "simulator/scpi/ScpiErrors.h"

namespace krv::simulator {

template <class Choice>
struct CommandWord {
    std::string_view word;
    Choice choice;
};

// Throws CommandFailure, which names the words, for another text.
template <class Choice>
[[nodiscard]] Choice ChoiceOf(std::span<const CommandWord<Choice>> words, std::string_view text) {
    std::vector<std::string_view> known;
    for (const CommandWord<Choice>& each : words) {
        if (HeaderMatches(each.word, text)) {
            return each.choice;
        }
        known.push_back(each.word);
    }
    throw CommandFailure(ScpiError::IllegalParameterValue, Joined(known));
}

// The short form.
template <class Choice>
[[nodiscard]] std::string WordOf(std::span<const CommandWord<Choice>> words, Choice choice) {
    std::string shortForm;
    for (const CommandWord<Choice>& each : words) {
        if (each.choice == choice) {
            shortForm = each.word.substr(0, each.word.find_first_of("abcdefghijklmnopqrstuvwxyz"));
        }
    }
    return shortForm;
}

}  // namespace krv::simulator
