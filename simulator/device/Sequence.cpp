#include "simulator/device/Sequence.h"

#include <charconv>

#include "simulator/scpi/ScpiErrors.h"

namespace krv::simulator {
namespace {

CommandFailure NoSequence(std::string_view segment) {
    return CommandFailure(ScpiError::IllegalParameterValue,
                          "\'" + std::string(segment) + "\' is no segment as in NAME*COUNT");
}

// A name may have an asterisk of its own: the last one stands before the count.
Segment ParseSegment(std::string_view text) {
    Segment segment;
    const auto asterisk = text.rfind('*');
    if (asterisk != std::string_view::npos) {
        const char* const end = text.data() + text.size();
        const auto [stop, failure] =
            std::from_chars(text.data() + asterisk + 1, end, segment.repeats);
        if (failure != std::errc() || stop != end || segment.repeats == 0 ||
            segment.repeats > MostRepeats) {
            throw NoSequence(text);
        }
    }
    segment.name = text.substr(0, asterisk);
    if (segment.name.empty()) {
        throw NoSequence(text);
    }
    return segment;
}

}  // namespace

Sequence ParseSequence(std::string_view text) {
    Sequence sequence;
    while (!text.empty()) {
        const auto comma = text.find(',');
        sequence.push_back(ParseSegment(text.substr(0, comma)));
        if (comma == text.size() - 1) {
            throw NoSequence(text.substr(0, 40));
        }
        if (sequence.size() > MostSegments) {
            throw CommandFailure(
                ScpiError::IllegalParameterValue,
                "a sequence has at most " + std::to_string(MostSegments) + " segments");
        }
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return sequence;
}

std::string SequenceText(const Sequence& sequence) {
    std::string text;
    for (const Segment& segment : sequence) {
        text += (text.empty() ? "" : ",") + segment.name + '*' + std::to_string(segment.repeats);
    }
    return text;
}

}  // namespace krv::simulator
