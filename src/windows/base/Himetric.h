// The unit of measure in which OLE has sizes and pictures: a hundredth of a millimetre.
#pragma once

namespace krv::windows {

inline constexpr int HimetricPerInch = 2540;

}  // namespace krv::windows
