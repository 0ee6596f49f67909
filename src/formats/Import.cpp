#include "formats/Import.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include "common/Numbers.h"
#include "formats/Counted.h"
#include "formats/Fault.h"
#include "formats/Recording.h"
#include "formats/Roles.h"
#include "formats/SampleChanges.h"
#include "formats/TimeSteps.h"

namespace krv::formats {
namespace {

constexpr std::size_t MostFramesAtOnce = 8192;
// Of all columns together: there may be many.
constexpr std::size_t ValuesAtOnce = std::size_t{1} << 18U;
constexpr double LargestCode = 32768;
constexpr std::uint64_t MostPoints = std::uint64_t{1} << 31U;

class ImportRun {
 public:
    ImportRun(const InputFile& file, const ImportOptions& options,
              const std::function<void()>& lookUp)
        : m_file(file.name),
          m_options(options),
          m_lookUp(lookUp),
          m_recording(OpenRecording(file, {options.raw, !options.columns.empty()})),
          m_about(m_recording->Description()),
          m_width(m_about.columns.size()) {}

    ImportedWaveform Run() {
        m_values.resize(m_width *
                        std::clamp<std::size_t>(ValuesAtOnce / m_width, 1, MostFramesAtOnce));
        std::size_t frames = m_recording->Read(m_values);
        Begin(std::span(m_values).first(std::min<std::size_t>(frames, 16) * m_width));
        while (frames > 0 && !IsComplete()) {
            Take(frames);
            m_lookUp();
            frames = IsComplete() ? 0 : m_recording->Read(m_values);
        }
        if (m_result.Points() == 0) {
            throw FileFault(m_file, m_frame == 0
                                        ? "It holds no points."
                                        : "There are no points from " +
                                              std::to_string(m_options.firstPoint) +
                                              " on: it holds " + std::to_string(m_frame) + '.');
        }
        TellOfRange();
        FindRate();
        FindFullScale();
        TellOfRounding();
        MarkAnnotations();
        Resample();
        Scale();
        return std::move(m_result);
    }

 private:
    [[nodiscard]] bool IsComplete() const {
        return m_options.points && m_result.Points() >= *m_options.points;
    }

    void Begin(std::span<const double> firstFrames) {
        m_result.format = m_about.format;
        m_result.warnings = m_about.notes;
        m_roles = FindRoles(m_file, m_about, m_options.columns, firstFrames);
        if (!m_roles.leftOut.empty()) {
            m_result.warnings.push_back(m_roles.leftOut);
        }
        const std::uint64_t most =
            std::min(m_about.mostFrames, m_options.points.value_or(MostPoints));
        const auto capacity = static_cast<std::size_t>(std::min(most, MostPoints));
        const Column& i = m_about.columns[m_roles.i];
        RequireLike(i);
        const bool areCodes = i.isInteger && i.fullScale > 0 && i.fullScale <= LargestCode;
        m_result.i = Samples(capacity, areCodes);
        m_isInteger = true;
        std::string columns = "I from " + DescribeColumn(m_about, m_roles.i);
        if (m_roles.q) {
            m_result.q = Samples(capacity, areCodes);
            columns += ", Q from " + DescribeColumn(m_about, *m_roles.q);
        }
        if (m_roles.markers) {
            m_result.markers.Reset(capacity);
            columns += ", markers from " + DescribeColumn(m_about, *m_roles.markers);
        }
        if (m_roles.time) {
            columns += ", " + std::string(CountsPoints() ? "point numbers" : "time") + " from " +
                       DescribeColumn(m_about, *m_roles.time);
        }
        m_result.done.push_back(columns + '.');
    }

    [[nodiscard]] bool CountsPoints() const {
        return m_roles.timeUnit == 0 && m_roles.unknownUnit.empty();
    }

    // I and Q must have one scale.
    void RequireLike(const Column& i) const {
        if (m_roles.q && m_about.columns[*m_roles.q].fullScale != i.fullScale) {
            throw FileFault(m_file, "I and Q are values of different types.");
        }
    }

    // The frames that were read last, as far as they are wanted.
    void Take(std::size_t frames) {
        const std::uint64_t skip = std::min<std::uint64_t>(
            frames, m_options.firstPoint - std::min(m_options.firstPoint, m_frame));
        const std::uint64_t room =
            m_options.points.value_or(std::numeric_limits<std::uint64_t>::max()) -
            m_result.Points();
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(frames - skip, room));
        const std::span<const double> from =
            std::span(m_values).subspan(static_cast<std::size_t>(skip) * m_width);
        const std::uint64_t first = m_frame + skip;
        m_frame += frames;
        if (count == 0) {
            return;
        }
        TakeChannel(from.subspan(m_roles.i), count, first, m_result.i);
        if (m_roles.q) {
            TakeChannel(from.subspan(*m_roles.q), count, first, m_result.q);
        }
        if (m_roles.markers) {
            TakeMarkers(from.subspan(*m_roles.markers), count, first);
        }
        if (m_roles.time) {
            m_times.Add(from.subspan(*m_roles.time), m_width, count);
        }
    }

    void TakeChannel(std::span<const double> values, std::size_t count, std::uint64_t first,
                     Samples& channel) {
        double peak = m_result.peak;
        for (std::size_t k = 0; k < count; ++k) {
            const double value = values[k * m_width];
            if (!std::isfinite(value)) {
                throw FileFault(m_file + ", point " + std::to_string(first + k),
                                "The value is not a finite number.");
            }
            peak = std::max(peak, std::abs(value));
            m_isInteger = m_isInteger && value == std::trunc(value);
        }
        m_result.peak = peak;
        channel.Append(values, m_width, count);
    }

    void TakeMarkers(std::span<const double> values, std::size_t count, std::uint64_t first) {
        const double zero = m_about.columns[*m_roles.markers].zero;
        const std::size_t done = m_result.markers.Size();
        m_result.markers.Resize(done + count);
        for (std::size_t k = 0; k < count; ++k) {
            const double value = values[k * m_width] + zero;
            if (!(value >= 0 && value <= LargestMarker && value == std::trunc(value))) {
                throw FileFault(
                    m_file + ", point " + std::to_string(first + k),
                    "The marker is " + NumberToText(value) + ", not an integer from 0 to 15.");
            }
            m_result.markers[done + k] = static_cast<std::uint8_t>(value);
        }
    }

    void TellOfRange() {
        const std::uint64_t points = m_result.Points();
        if (m_options.firstPoint == 0 && !m_options.points) {
            return;
        }
        const std::string taken = Counted(points, "point") + " from point " +
                                  std::to_string(m_options.firstPoint) + " on";
        m_result.done.push_back("The range is " + taken + '.');
        if (m_options.points.value_or(points) > points) {
            m_result.warnings.push_back("The range has " + taken + ", not " +
                                        std::to_string(*m_options.points) + ": the file holds " +
                                        std::to_string(m_frame) + '.');
        }
    }

    void FindRate() {
        m_result.sampleRate = m_about.sampleRate;
        if (!m_roles.unknownUnit.empty()) {
            m_result.warnings.push_back("The times in " + DescribeColumn(m_about, *m_roles.time) +
                                        " tell no sample rate: their unit is none of s, ms, us, "
                                        "ns and ps.");
        }
        if (!m_roles.time || m_roles.timeUnit == 0) {
            return;
        }
        m_result.sampleRate = m_times.Rate(m_roles.timeUnit);
        if (!m_result.sampleRate) {
            throw FileFault(
                m_file, "The times in " + DescribeColumn(m_about, *m_roles.time) + " don't rise.");
        }
        if (std::string uneven = m_times.Unevenness(m_roles.timeUnit); !uneven.empty()) {
            m_result.warnings.push_back(std::move(uneven));
        }
    }

    void FindFullScale() {
        const Column& i = m_about.columns[m_roles.i];
        m_result.isInteger = m_isInteger && (i.isInteger || i.fullScale == 0);
        m_result.fullScale = i.fullScale;
        if (i.fullScale == 0) {
            const bool isBeyondOne =
                m_result.isInteger && m_result.peak > 1 && m_result.peak <= LargestCode;
            m_result.fullScale = isBeyondOne ? LargestCode : 1;
        }
        const bool areCodes =
            m_result.isInteger && m_result.fullScale == LargestCode && !m_options.resampleTo;
        m_result.done.push_back(
            "Full scale is " + NumberToText(m_result.fullScale) +
            (areCodes ? ": the integers are codes and stay as they are." : "."));
        if (i.zero != 0) {
            m_result.done.push_back("The values are unsigned: " + NumberToText(i.zero) +
                                    " stands for zero.");
        }
        if (m_result.IsBeyondFullScale()) {
            m_result.warnings.push_back("The largest magnitude, " + NumberToText(m_result.peak) +
                                        ", is beyond full scale, which is " +
                                        NumberToText(m_result.fullScale) + '.');
        }
    }

    // Beyond this a value doesn't hold every integer.
    void TellOfRounding() {
        constexpr double LargestExact = 9007199254740992;
        if (m_about.columns[m_roles.i].isInteger && m_result.peak >= LargestExact) {
            m_result.done.push_back("Integers beyond 2^53 were rounded to 53 bits.");
        }
    }

    // What the file itself marks becomes marker 1, unless a column has the markers.
    void MarkAnnotations() {
        if (m_about.annotations.empty() || m_roles.markers) {
            return;
        }
        m_result.markers.Reset(m_result.Points());
        m_result.markers.Resize(m_result.Points());
        std::ranges::fill(m_result.markers.Span(), std::uint8_t{0});
        std::vector<Annotation> outside;
        for (const Annotation& each : m_about.annotations) {
            if (!Mark(each)) {
                outside.push_back(each);
            }
        }
        m_result.done.push_back("Marker 1 from " +
                                Counted(m_about.annotations.size() - outside.size(), "annotation") +
                                '.');
        if (!outside.empty()) {
            m_result.warnings.push_back("Left out: " + Counted(outside.size(), "annotation") +
                                        " outside the points that were read, the first from "
                                        "sample " +
                                        std::to_string(outside.front().first) + " on.");
        }
    }

    // False where none of its points was read.
    bool Mark(const Annotation& annotation) {
        const std::uint64_t origin = Sum(m_about.firstFrame, m_options.firstPoint);
        const std::uint64_t end = Sum(annotation.first, annotation.count);
        const std::uint64_t from = annotation.first - std::min(annotation.first, origin);
        const std::uint64_t to =
            std::min<std::uint64_t>(end - std::min(end, origin), m_result.Points());
        for (std::uint64_t at = from; at < to; ++at) {
            m_result.markers[static_cast<std::size_t>(at)] = 1;
        }
        return from < to;
    }

    // The largest number where the sum is beyond it.
    static std::uint64_t Sum(std::uint64_t a, std::uint64_t b) {
        return a + std::min(b, std::numeric_limits<std::uint64_t>::max() - a);
    }

    void Resample() {
        if (!m_options.resampleTo) {
            return;
        }
        if (!m_result.sampleRate) {
            throw FileFault(m_file, "It can't be resampled: it has no sample rate.");
        }
        const std::size_t before = m_result.Points();
        const double ratio = *m_options.resampleTo / *m_result.sampleRate;
        const double points = RoundHalfEven(static_cast<double>(before) * ratio);
        if (!(points >= 1 && points < static_cast<double>(MostPoints))) {
            throw FileFault(m_file, "Resampling would make " + NumberToText(points) + " points.");
        }
        const auto after = static_cast<std::size_t>(points);
        m_result.i = Resampled(m_result.i, after);
        m_result.q = m_roles.q ? Resampled(m_result.q, after) : Samples();
        ResampleMarkers(after);
        m_result.isInteger = false;
        FindPeak();
        // A whole number of points takes the waveform's own time only nearly.
        m_result.sampleRate = *m_result.sampleRate * points / static_cast<double>(before);
        m_result.done.push_back("Resampled from " + std::to_string(before) + " to " +
                                Counted(after, "point") + ", which makes " +
                                NumberToText(*m_result.sampleRate) + " Hz.");
    }

    void FindPeak() {
        m_result.peak = 0;
        for (const Samples* channel : {&m_result.i, &m_result.q}) {
            for (std::size_t at = 0; at < channel->Size(); ++at) {
                m_result.peak = std::max(m_result.peak, std::abs((*channel)[at]));
            }
        }
    }

    void Scale() {
        if (!m_options.peakPercent) {
            return;
        }
        if (m_result.peak == 0) {
            throw FileFault(m_file, "It can't be scaled: all values are zero.");
        }
        const double factor = *m_options.peakPercent / 100 * m_result.fullScale / m_result.peak;
        m_result.i = Multiplied(m_result.i, factor);
        m_result.q = Multiplied(m_result.q, factor);
        m_result.isInteger = false;
        // What rounding adds is none of the waveform's.
        m_result.peak = std::min(std::abs(factor) * m_result.peak, m_result.fullScale);
        m_result.done.push_back("Scaled by " + NumberToText(factor) + ": the peak is at " +
                                NumberToText(*m_options.peakPercent) + " % of full scale.");
    }

    void ResampleMarkers(std::size_t after) {
        const std::size_t before = m_result.markers.Size();
        if (before == 0) {
            return;
        }
        SampleBuffer<std::uint8_t> markers(after);
        markers.Resize(after);
        for (std::size_t at = 0; at < after; ++at) {
            markers[at] = m_result.markers[at * before / after];
        }
        m_result.markers = std::move(markers);
    }

    const std::string& m_file;
    const ImportOptions& m_options;
    const std::function<void()>& m_lookUp;
    std::unique_ptr<Recording> m_recording;
    const About& m_about;
    std::size_t m_width;
    std::vector<double> m_values;
    Roles m_roles;
    TimeSteps m_times;
    // Frames that were read.
    std::uint64_t m_frame = 0;
    bool m_isInteger = false;
    ImportedWaveform m_result;
};

}  // namespace

ImportedWaveform Import(const InputFile& file, const ImportOptions& options,
                        const std::function<void()>& lookUp) {
    return ImportRun(file, options, lookUp).Run();
}

}  // namespace krv::formats
