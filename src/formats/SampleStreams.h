// SampleStreams: a recording whose columns come from one or several streams of binary values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "formats/ByteStreams.h"
#include "formats/Recording.h"
#include "formats/SampleType.h"

namespace krv::formats {

// Values of some columns side by side, frame after frame.
struct SampleStream {
    std::unique_ptr<ByteStream> bytes;
    SampleType type;
    std::size_t columns = 1;
};

// A column of values of the type.
[[nodiscard]] Column ColumnOf(SampleType type, std::string name = {});
// The two columns of complex numbers, "I" and "Q" behind the prefix.
void AddComplexColumns(std::vector<Column>& columns, SampleType type, const std::string& prefix);

// A description of values of one type: format and columns.
[[nodiscard]] About AboutSamples(const std::string& format, const SampleLayout& layout,
                                 std::size_t channels);

// Adds the number of frames in so many bytes, and a note on bytes that make no whole one.
void CountFrames(About& about, std::uint64_t bytes, std::uint64_t frameBytes);

class SampleStreams final : public Recording {
 public:
    // The description names as many columns as the streams have together, and the number of frames,
    // which all streams hold: one that ends before is Error 321.
    SampleStreams(std::string file, About about, std::vector<SampleStream> streams);

    [[nodiscard]] std::size_t Read(std::span<double> values) override;

 private:
    void ReadColumns(SampleStream& stream, std::size_t at, std::size_t frames,
                     std::span<double> values);

    std::string m_file;
    std::vector<SampleStream> m_streams;
    std::size_t m_width;
    std::uint64_t m_done = 0;
    std::vector<std::byte> m_bytes;
    std::vector<double> m_column;
};

}  // namespace krv::formats
