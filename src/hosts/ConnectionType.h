// What kind of connection the toolbar's buttons are set for.
#pragma once

#include <cstdint>

namespace krv::hosts::ConnectionType {

// No instrument server.
inline constexpr std::int16_t None = 0;
// A KRV over a serial connection: limited.
inline constexpr std::int16_t SerialKRV = 1;
// A TQL over a serial connection: not supported.
inline constexpr std::int16_t SerialTQL = 2;
inline constexpr std::int16_t Full = 3;

}  // namespace krv::hosts::ConnectionType
