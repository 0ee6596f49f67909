// The picture files that a library of the platform writes. Each gives the file's bytes and throws
// Error 51 when the library fails.
#pragma once

#include <string>

#include "suite/picture/Picture.h"

namespace krv::suite::picture {

[[nodiscard]] std::string EncodeGif(const Picture& picture);
// At a quality that keeps thin letters clean.
[[nodiscard]] std::string EncodeJpeg(const Picture& picture);
// Without loss.
[[nodiscard]] std::string EncodeTiff(const Picture& picture);

}  // namespace krv::suite::picture
