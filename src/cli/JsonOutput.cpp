#include "cli/JsonOutput.h"

#include <cstddef>
#include <cstdint>

#include "common/Hexadecimal.h"

namespace krv::cli {
namespace {

// Of a control character from DEL on at this place; 0 for none.
std::uint32_t LateControl(const std::string& utf8, std::size_t at) {
    const auto byteAt = [&](std::size_t place) { return static_cast<unsigned char>(utf8[place]); };
    if (byteAt(at) == 0x7F) {
        return 0x7F;
    }
    const bool isPair = byteAt(at) == 0xC2 && at + 1 < utf8.size() && byteAt(at + 1) < 0xA0;
    return isPair ? byteAt(at + 1) : 0;
}

}  // namespace

std::string AsText(const OutputJson& json) {
    const std::string plain = json.dump(2, ' ', false, OutputJson::error_handler_t::replace);
    std::string text;
    for (std::size_t at = 0; at < plain.size(); ++at) {
        const std::uint32_t control = LateControl(plain, at);
        text += control == 0 ? std::string(1, plain[at]) : "\\u" + Hexadecimal(control, 4);
        at += control > 0x7F ? 1 : 0;
    }
    return text + '\n';
}

}  // namespace krv::cli
