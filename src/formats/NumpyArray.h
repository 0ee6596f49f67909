// NumpyArray: the header of an array that NumPy has saved, and the streams its values come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "formats/ByteStreams.h"
#include "formats/Recording.h"
#include "formats/SampleStreams.h"

namespace krv::formats {

struct NumpyArray {
    SampleLayout layout;
    std::uint64_t frames = 0;
    std::size_t channels = 1;
    // All values of a channel follow one another; otherwise those of a frame do.
    bool isPlanar = false;
    // Of the header, before the first value.
    std::uint64_t headerBytes = 0;

    [[nodiscard]] std::uint64_t ValueBytes() const noexcept {
        return frames * channels * FrameBytes();
    }
    // Of one channel.
    [[nodiscard]] std::uint64_t FrameBytes() const noexcept {
        return std::uint64_t{layout.type.bytes} * (layout.isComplex ? 2 : 1);
    }
};

// Reads the header off a stream that begins with the array, of which the file's name is told in
// errors. Throws Error 321 for an array of anything but numbers, or with more than two dimensions.
[[nodiscard]] NumpyArray ReadNumpyHeader(const std::string& file, ByteStream& stream);

// The streams of an array, each from a stream of its own that `open` returns at the array's header.
[[nodiscard]] std::vector<SampleStream> StreamsOf(
    const NumpyArray& array, const std::function<std::unique_ptr<ByteStream>()>& open);

}  // namespace krv::formats
