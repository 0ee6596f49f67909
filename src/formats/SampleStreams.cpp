#include "formats/SampleStreams.h"

#include <algorithm>
#include <utility>

#include "formats/Fault.h"

namespace krv::formats {

Column ColumnOf(SampleType type, std::string name) {
    return {std::move(name), FullScaleOf(type), type.kind != SampleKind::Float, ZeroOf(type)};
}

void AddComplexColumns(std::vector<Column>& columns, SampleType type, const std::string& prefix) {
    columns.push_back(ColumnOf(type, prefix + "I"));
    columns.push_back(ColumnOf(type, prefix + "Q"));
}

About AboutSamples(const std::string& format, const SampleLayout& layout, std::size_t channels) {
    About about;
    about.format = format + ", " + (layout.isComplex ? "complex " : "") + DescribeType(layout.type);
    about.isComplex = layout.isComplex;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        const std::string number = channels > 1 ? std::to_string(channel + 1) : std::string();
        if (layout.isComplex) {
            AddComplexColumns(about.columns, layout.type, number);
        } else {
            about.columns.push_back(ColumnOf(layout.type));
        }
    }
    return about;
}

void CountFrames(About& about, std::uint64_t bytes, std::uint64_t frameBytes) {
    about.frames = about.mostFrames = bytes / frameBytes;
    if (const std::uint64_t over = bytes % frameBytes; over != 0) {
        about.notes.push_back(over == 1 ? "The last byte makes no whole sample and was left out."
                                        : "The last " + std::to_string(over) +
                                              " bytes make no whole sample and were left out.");
    }
}

SampleStreams::SampleStreams(std::string file, About about, std::vector<SampleStream> streams)
    : Recording(std::move(about)), m_file(std::move(file)), m_streams(std::move(streams)) {
    m_width = Description().columns.size();
}

std::size_t SampleStreams::Read(std::span<double> values) {
    const std::uint64_t left = Description().frames.value_or(0) - m_done;
    const auto frames =
        static_cast<std::size_t>(std::min<std::uint64_t>(left, values.size() / m_width));
    std::size_t at = 0;
    for (SampleStream& stream : m_streams) {
        ReadColumns(stream, at, frames, values);
        at += stream.columns;
    }
    m_done += frames;
    return frames;
}

void SampleStreams::ReadColumns(SampleStream& stream, std::size_t at, std::size_t frames,
                                std::span<double> values) {
    const std::size_t count = frames * stream.columns;
    m_bytes.resize(count * stream.type.bytes);
    const std::size_t got = stream.bytes->Read(m_bytes);
    if (got < m_bytes.size()) {
        const std::uint64_t whole = m_done + got / stream.type.bytes / stream.columns;
        throw FileFault(m_file, "The samples end behind " + std::to_string(whole) + " of " +
                                    std::to_string(Description().frames.value_or(0)) + '.');
    }
    if (stream.columns == m_width) {
        Decode(stream.type, m_bytes, values.first(count));
        return;
    }
    m_column.resize(count);
    Decode(stream.type, m_bytes, m_column);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        std::copy_n(m_column.data() + frame * stream.columns, stream.columns,
                    values.data() + frame * m_width + at);
    }
}

}  // namespace krv::formats
