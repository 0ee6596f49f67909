// PNG files with a table of at most 256 colours, without compression, so that no library is needed.
#pragma once

#include <string>

#include "suite/picture/Picture.h"

namespace krv::plots {

[[nodiscard]] std::string EncodePngFile(const suite::picture::Picture& picture);

}  // namespace krv::plots
