// Recording: a file of samples that another program has written, opened for reading from its first
// frame to its last. A frame has one value of each column. One thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace krv::formats {

// A stretch of frames that the file itself marks. They count from About::firstFrame.
struct Annotation {
    std::uint64_t first = 0;
    std::uint64_t count = 0;
};

struct Column {
    // Empty where it has none.
    std::string name;
    // The magnitude that stands for full scale; 0 where the format doesn't say.
    double fullScale = 0;
    // Every value is an integer.
    bool isInteger = false;
    // What the file has for zero, which was taken off its values.
    double zero = 0;
};

struct About {
    // The kind of file and of its values, e.g. "WAV, 16-bit integers".
    std::string format;
    std::vector<Column> columns;
    // The columns come from complex numbers: I and Q of one signal are neighbours.
    bool isComplex = false;
    std::optional<double> sampleRate;
    // Without a value where only reading tells.
    std::optional<std::uint64_t> frames;
    // No more frames than this; what memory is reserved for.
    std::uint64_t mostFrames = 0;
    std::vector<Annotation> annotations;
    // The number of the first frame, where the file is a piece of a longer recording.
    std::uint64_t firstFrame = 0;
    // What the user should know; sentences.
    std::vector<std::string> notes;
};

class Recording {
 public:
    virtual ~Recording() = default;

    [[nodiscard]] const About& Description() const noexcept { return m_about; }

    // Fills as many whole frames as the span has room for, values of a frame side by side, and
    // returns how many; fewer only at the end. Throws Error 321 with the place and the reason where
    // the file can't be read on.
    [[nodiscard]] virtual std::size_t Read(std::span<double> values) = 0;

 protected:
    explicit Recording(About about) : m_about(std::move(about)) {}

 private:
    About m_about;
};

}  // namespace krv::formats
