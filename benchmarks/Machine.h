// What the figures were measured on.
#pragma once

#include <iosfwd>

namespace krv::benchmarks {

// As a list in Markdown: processor, memory, page sizes, system, compiler, how busy it is.
void DescribeMachine(std::ostream& out);

}  // namespace krv::benchmarks
