// Channels and codes from lists of numbers, and back.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "common/Numbers.h"
#include "waveform/data/Channel.h"

namespace krv::tests {

using Numbers = std::vector<double>;
using Codes = std::vector<std::int16_t>;

template <class T>
SampleBuffer<T> BufferOf(const std::vector<T>& values) {
    SampleBuffer<T> buffer(values.size());
    buffer.Resize(values.size());
    std::ranges::copy(values, buffer.Data());
    return buffer;
}

inline waveform::SharedCodes Shared(const Codes& codes) {
    return waveform::SharedCodes(BufferOf(codes));
}

inline Codes CodesOf(const waveform::SharedCodes& codes) {
    return {codes.Span().begin(), codes.Span().end()};
}

// As a text file gives them.
inline waveform::Channel ChannelOf(const Numbers& values) {
    return {.values = BufferOf(values), .source = {}, .date = {}, .loaded = true};
}

// As a binary file gives them.
inline waveform::Channel ChannelOf(const Codes& values, bool isUnsigned = false) {
    return {
        .values = waveform::InternalValues{Shared(values), isUnsigned, waveform::RangeOf(values)},
        .source = {},
        .date = {},
        .loaded = true};
}

// "1 2.5 -3"
inline std::string TextOf(const waveform::Channel& channel) {
    std::string text;
    const auto add = [&text](double value) {
        text += (text.empty() ? "" : " ") + NumberToText(value);
    };
    if (const auto* internal = channel.Internal()) {
        for (const std::int16_t code : internal->codes.Span()) {
            add(internal->isUnsigned ? static_cast<std::uint16_t>(code) : code);
        }
    } else {
        std::ranges::for_each(channel.Numbers()->Span(), add);
    }
    return text;
}

}  // namespace krv::tests
