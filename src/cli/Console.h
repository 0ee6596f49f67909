// Console: the streams, the terminal and the Ctrl-C of the command line front. A test passes its
// own.
#pragma once

#include <iosfwd>

#include "cli/Defaults.h"
#include "cli/Interruptions.h"
#include "common/Numbers.h"

namespace krv::cli {

struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    Interruptions& interruptions;
    // Questions can be asked: a person is at the input.
    bool canAsk = false;
    // Where progress is drawn live; null draws none.
    std::ostream* progress = nullptr;
    // In characters.
    int progressWidth = 80;
    // Where nothing is drawn, a line on standard error says so often how far the work is; negative:
    // never.
    int progressIntervalMs = 5000;
    // How the user writes numbers.
    NumberFormat numberFormat{};
    Environment environment{};
    // Standard error shows colours.
    bool hasColors = false;
    // Only what the user must know is printed.
    bool isQuiet = false;
};

}  // namespace krv::cli
