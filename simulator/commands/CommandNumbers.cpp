#include "simulator/commands/CommandNumbers.h"

#include <array>
#include <charconv>

#include "simulator/commands/CommandTable.h"
#include "simulator/commands/CommandWords.h"
#include "simulator/scpi/ScpiErrors.h"

namespace krv::simulator {

std::string NumberReply(double number) {
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                   std::chars_format::scientific, 9)
                         .ptr;
    std::string reply(text.data(), end);
    reply[reply.find('e')] = 'E';
    return reply;
}

void ReplyNumberOrLimit(CommandContext& context, double setting, double lowest, double highest) {
    if (context.Has(0)) {
        const std::array<CommandWord<double>, 2> limits{
            {{"MINimum", lowest}, {"MAXimum", highest}}};
        setting = ChoiceOf<double>(limits, context.Text(0));
    }
    context.Reply(NumberReply(setting));
}

double WithinLimits(double number, double lowest, double highest) {
    if (number < lowest || number > highest) {
        throw CommandFailure(ScpiError::DataOutOfRange,
                             NumberReply(lowest) + " to " + NumberReply(highest));
    }
    return number;
}

}  // namespace krv::simulator
