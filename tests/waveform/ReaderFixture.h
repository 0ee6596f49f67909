// ReaderFixture: a reader's surroundings, and its outcome as one line of text.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "common/Error.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/waveform/Values.h"
#include "waveform/readers/FileReading.h"

namespace krv::tests {

// Records what is shown, bar and messages, and cancels at a given question.
class RecordedProgress final : public waveform::PhaseProgress {
 public:
    std::vector<std::string> Messages;
    std::vector<std::string> Bar;
    int Questions = 0;
    int CancelAt = -1;
    std::function<void()> OnQuestion;

    void ShowMessage(const std::string& text) override { Messages.push_back(text); }
    void ShowProgress(std::int32_t maximum, std::int32_t value) override {
        Bar.push_back(std::to_string(value) + '/' + std::to_string(maximum));
    }
    bool IsCancelled() override {
        if (OnQuestion) {
            OnQuestion();
        }
        return ++Questions == CancelAt;
    }
};

class ReaderFixture : public ::testing::Test {
 protected:
    MemoryFiles Files;
    ManualClock Clock;
    RecordedProgress Progress;
    NumberFormat Format;
    std::size_t BlockBytes = std::size_t{256} << 10;
    waveform::FileToRead File{"data", "I-File", "PREFIX"};

    [[nodiscard]] waveform::ReadServices Services() {
        return {Files, Clock, Progress, Format, BlockBytes};
    }

    // "1 2.5 -3", or "error 13: description" with line breaks as " | ".
    template <class Read>
    std::string Outcome(const Read& read) {
        try {
            return Describe(read());
        } catch (const Error& error) {
            std::string text = error.Description();
            for (auto at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n")) {
                text.replace(at, 2, " | ");
            }
            return "error " + std::to_string(error.Number()) + ": " + text;
        }
    }

 private:
    static std::string Describe(const waveform::Channel& channel) {
        EXPECT_TRUE(channel.loaded);
        if (const auto* internal = channel.Internal()) {
            const waveform::CodeRange range = waveform::RangeOf(internal->codes.Span());
            EXPECT_EQ(internal->range.smallest, range.smallest);
            EXPECT_EQ(internal->range.largest, range.largest);
        }
        return TextOf(channel);
    }
};

}  // namespace krv::tests
