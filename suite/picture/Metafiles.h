// Windows metafiles that hold nothing but a picture. Both say that the picture is to be shown at
// 96 pixels an inch.
#pragma once

#include <string>

#include "suite/picture/Picture.h"

namespace krv::suite::picture {

// A metafile of the old kind, with the header in front that says how large it is: what office
// applications insert.
[[nodiscard]] std::string EncodePlaceableMetafile(const Picture& picture);

[[nodiscard]] std::string EncodeEnhancedMetafile(const Picture& picture);

}  // namespace krv::suite::picture
