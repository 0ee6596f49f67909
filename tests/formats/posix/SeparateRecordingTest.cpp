// Recordings that a process of its own reads: they arrive as they are, and what ends that process
// ends nothing else.
#include "formats/SeparateRecording.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using formats::About;
using formats::Recording;

constexpr std::uint64_t Frames = 100000;

About ThreeColumns() {
    About about;
    about.format = "a format";
    about.columns = {{"I\xFF", 128, true, 128}, {"", 0, false, 0}, {"Q", 1, false, 0}};
    about.isComplex = true;
    about.sampleRate = 1e6 / 3;
    about.frames = Frames;
    about.mostFrames = Frames + 1;
    about.annotations = {{3, 4}};
    about.firstFrame = 7;
    about.notes = {"one", "two"};
    return about;
}

// The values count on; in front of a frame something may happen.
class Counting final : public Recording {
 public:
    explicit Counting(std::function<void(std::uint64_t)> before = {}, About about = ThreeColumns())
        : Recording(std::move(about)), m_before(std::move(before)) {}

    std::size_t Read(std::span<double> values) override {
        std::size_t at = 0;
        for (; at + 3 <= values.size() && m_next < 3 * Frames; at += 3) {
            if (m_before) {
                m_before(m_next / 3);
            }
            for (std::size_t k = 0; k < 3; ++k) {
                values[at + k] = static_cast<double>(m_next++);
            }
        }
        return at / 3;
    }

 private:
    std::function<void(std::uint64_t)> m_before;
    std::uint64_t m_next = 0;
};

class SeparateRecordingTest : public ::testing::Test {
 protected:
    static std::unique_ptr<Recording> Open(
        const std::function<std::unique_ptr<Recording>()>& open) {
        return formats::OpenSeparately({std::uint64_t{128} << 20U, 2}, open, "damage");
    }
    // Opens and reads; the error's description.
    static std::string Fault(const std::function<std::unique_ptr<Recording>()>& open) {
        return DescriptionOf([&] {
            const auto recording = Open(open);
            std::vector<double> values(3000);
            while (recording->Read(values) > 0) {
            }
        });
    }
    static std::string FaultBefore(const std::function<void()>& happens) {
        return Fault([&] {
            happens();
            return std::make_unique<Counting>();
        });
    }

    // Nothing is left of any process.
    void TearDown() override { EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1); }
};

TEST_F(SeparateRecordingTest, ArrivesAsItIs) {
    const auto recording = Open([] {
        // The terminal's Ctrl-C reaches both processes.
        raise(SIGINT);
        return std::make_unique<Counting>();
    });
    const About& about = recording->Description();
    const About expected = ThreeColumns();
    EXPECT_EQ(about.format, expected.format);
    ASSERT_EQ(about.columns.size(), 3U);
    EXPECT_EQ(about.columns[0].name, "I\xFF");
    EXPECT_EQ(about.columns[0].fullScale, 128);
    EXPECT_EQ(about.columns[0].zero, 128);
    EXPECT_TRUE(about.columns[0].isInteger);
    EXPECT_FALSE(about.columns[2].isInteger);
    EXPECT_TRUE(about.isComplex);
    EXPECT_EQ(about.sampleRate, expected.sampleRate);
    EXPECT_EQ(about.frames, Frames);
    EXPECT_EQ(about.mostFrames, Frames + 1);
    EXPECT_EQ(about.annotations.at(0).count, 4U);
    EXPECT_EQ(about.firstFrame, 7U);
    EXPECT_EQ(about.notes, expected.notes);
    // Room for some frames and a piece of one.
    std::vector<double> values(3 * 777 + 2);
    std::uint64_t next = 0;
    for (std::size_t frames = 777; frames == 777;) {
        frames = recording->Read(values);
        for (std::size_t at = 0; at < 3 * frames; ++at) {
            ASSERT_EQ(values[at], static_cast<double>(next++));
        }
    }
    EXPECT_EQ(next, 3 * Frames);
}

TEST_F(SeparateRecordingTest, ErrorsOfTheReaderArriveAndItsEndIsDamage) {
    EXPECT_EQ(FaultBefore([] { throw Error(ErrorNumber::FileNotFound, "not there"); }),
              "not there");
    EXPECT_THROW(FaultBefore([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_EQ(FaultBefore([] { throw std::string("else"); }), "damage");
    EXPECT_EQ(FaultBefore([] { std::abort(); }), "damage");
    EXPECT_EQ(FaultBefore([] { _exit(0); }), "damage");
    EXPECT_EQ(Fault([] {
                  return std::make_unique<Counting>([](std::uint64_t frame) {
                      return frame < 60000 ? void() : throw Error(321, "in the middle");
                  });
              }),
              "in the middle");
    EXPECT_EQ(Fault([] {
                  return std::make_unique<Counting>(
                      [](std::uint64_t frame) { return frame < 60000 ? void() : std::abort(); });
              }),
              "damage");
}

TEST_F(SeparateRecordingTest, LimitsEndTheReader) {
    EXPECT_EQ(FaultBefore([] {
                  void* const memory = std::malloc(std::size_t{1} << 30U);
                  if (memory == nullptr) {
                      std::abort();
                  }
              }),
              "damage");
    EXPECT_EQ(FaultBefore([] {
                  for (volatile bool isEndless = true; isEndless;) {
                  }
              }),
              "damage");
}

TEST_F(SeparateRecordingTest, WhatCannotBeIsDamage) {
    const auto described = [](const std::function<void(About&)>& change) {
        return Fault([&] {
            About about = ThreeColumns();
            change(about);
            return std::make_unique<Counting>(nullptr, about);
        });
    };
    EXPECT_EQ(described([](About&) {}), "no error");
    EXPECT_EQ(described([](About& about) { about.frames = about.mostFrames = Frames - 1; }),
              "damage");
    EXPECT_EQ(described([](About& about) { ++about.frames.value(); }), "damage");
    EXPECT_EQ(described([](About& about) { about.mostFrames = UINT64_MAX / 2; }), "damage");
    EXPECT_EQ(described([](About& about) { about.frames = Frames + 2; }), "damage");
    EXPECT_EQ(described([](About& about) { about.format.resize(std::size_t{17} << 20U); }),
              "damage");
}

TEST_F(SeparateRecordingTest, TheReaderGoesWithTheRecording) {
    const auto recording = Open([] { return std::make_unique<Counting>(); });
    std::vector<double> values(3);
    EXPECT_EQ(recording->Read(values), 1U);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), 0);
}

}  // namespace
}  // namespace krv::tests
