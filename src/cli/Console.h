// Console: the streams, the terminal and the Ctrl-C of the command line front. A test passes its
// own.
#pragma once

#include <iosfwd>

#include "cli/Interruptions.h"

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
};

}  // namespace krv::cli
