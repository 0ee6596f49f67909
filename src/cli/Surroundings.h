// Surroundings: what the command line front is started in, handed over so that a test can stand in
// for the terminal.
#pragma once

#include <iosfwd>

#include "cli/Interruptions.h"

namespace krv::cli {

struct Surroundings {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
    Interruptions& interruptions;
    // Questions can be asked: somebody sits at the input.
    bool canAsk = false;
    // Where progress is drawn live; null draws none.
    std::ostream* progress = nullptr;
    int progressWidth = 80;
};

}  // namespace krv::cli
