#include "waveform/checks/PointCountRules.h"

#include <string_view>
#include <utility>

#include "common/Text.h"

namespace krv::waveform {
namespace {

constexpr std::int32_t OldModelMinimum = 16;
constexpr std::int32_t NewModelMinimum = 60;

class Sentences {
 public:
    void Refuse(bool fires, std::string_view sentence) {
        m_refused |= fires;
        Warn(fires, sentence);
    }
    void Warn(bool fires, std::string_view sentence) {
        if (fires) {
            m_text.append(CrLf).append(sentence);
        }
    }
    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }
    [[nodiscard]] bool Refused() const noexcept { return m_refused; }

 private:
    std::string m_text;
    bool m_refused = false;
};

bool IsOdd(std::int64_t count) noexcept {
    return count % 2 != 0;
}

void ApplyOldModelRules(const PointCounts& counts, Sentences& sentences) {
    sentences.Refuse(counts.iCount < OldModelMinimum,
                     "The I (or I and Q)-Data must contain at least 16 points.");
    sentences.Refuse(IsOdd(counts.iCount), "The I-Data must contain an even number of points.");
    if (counts.useQ) {
        sentences.Refuse(counts.qCount < OldModelMinimum,
                         "The Q-Data must contain at least 16 points.");
        sentences.Refuse(IsOdd(counts.qCount), "The Q-Data must contain an even number of points.");
    }
}

void ApplyNewModelRules(const PointCounts& counts, Sentences& sentences) {
    const std::int64_t all = std::int64_t{counts.iCount} + (counts.useQ ? counts.qCount : 0);
    // Without a separate Q source each point takes two of the I values.
    const std::int32_t minimum = counts.useQ ? NewModelMinimum : 2 * NewModelMinimum;
    sentences.Refuse(IsOdd(all), "The I and Q Data must contain an even number of points.");
    sentences.Refuse(counts.iCount < minimum, "The I and Q-Data must contain at least 60 points.");
}

// Without a separate Q source its count is 0 and can't save a pulse that I is too short for.
bool PulseExceedsWaveform(const PointCounts& counts) noexcept {
    const std::int64_t end = std::int64_t{counts.markerStart} + counts.markerLength;
    return RulesNeedMarkerPulse(counts) && counts.markerLength != 0 && end > counts.iCount &&
           end > (counts.useQ ? counts.qCount : 0);
}

std::string CountSentence(std::string_view channel, std::int32_t count) {
    return std::string("The ").append(channel).append("-Data contains ") + std::to_string(count) +
           " data points.";
}

std::string CountsInFront(const PointCounts& counts) {
    std::string text = CountSentence("I", counts.iCount);
    if (counts.useQ) {
        text.append(CrLf).append(CountSentence("Q", counts.qCount));
    }
    return text;
}

}  // namespace

bool RulesNeedMarkerPulse(const PointCounts& counts) noexcept {
    return counts.fromFiles && counts.markerPulse && (counts.newModel || counts.scalable);
}

PointCountReport CheckPointCounts(const PointCounts& counts) {
    Sentences sentences;
    if (counts.newModel) {
        ApplyNewModelRules(counts, sentences);
    } else {
        ApplyOldModelRules(counts, sentences);
    }
    sentences.Warn(counts.useQ && counts.iCount != counts.qCount,
                   "The I- and Q-Data should contain the same number of points.");
    sentences.Warn(PulseExceedsWaveform(counts),
                   "The Event Marker Starting Point plus the Event Marker Number of Points exceeds "
                   "the number of points in the waveform.");
    if (sentences.Text().empty()) {
        return {};
    }
    std::string text = counts.fromFiles ? CountsInFront(counts) + sentences.Text()
                                        : sentences.Text().substr(CrLf.size());
    return {std::move(text), sentences.Refused()};
}

}  // namespace krv::waveform
