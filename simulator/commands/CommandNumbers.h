// The numbers that commands take and reply.
#pragma once

#include <string>

namespace krv::simulator {

// E.g. "1.500000000E+09".
[[nodiscard]] std::string NumberReply(double number);

class CommandContext;

// Replies the setting or, where the first argument says MINimum or MAXimum, its limit.
void ReplyNumberOrLimit(CommandContext& context, double setting, double lowest, double highest);

// Throws CommandFailure, which names the limits, for a number beyond them.
[[nodiscard]] double WithinLimits(double number, double lowest, double highest);

}  // namespace krv::simulator
