// What a piece of work throws, as texts and numbers to compare.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "common/Error.h"

namespace krv::tests {

template <class Work>
std::optional<Error> CaughtFrom(const Work& work) {
    try {
        static_cast<void>(work());
    } catch (const Error& error) {
        return error;
    }
    return std::nullopt;
}

// "NUMBER DESCRIPTION (SOURCE)", or "none".
template <class Work>
std::string ErrorOf(const Work& work) {
    const auto error = CaughtFrom(work);
    if (!error) {
        return "none";
    }
    return std::to_string(error->Number()) + ' ' + error->Description() +
           (error->Source().empty() ? "" : " (" + error->Source() + ')');
}

// The number alone; 0 for none.
template <class Work>
std::int32_t ErrorNumberOf(const Work& work) {
    const auto error = CaughtFrom(work);
    return error ? error->Number() : 0;
}

// The description alone; "no error" for none.
template <class Work>
std::string DescriptionOf(const Work& work) {
    const auto error = CaughtFrom(work);
    return error ? error->Description() : "no error";
}

}  // namespace krv::tests
