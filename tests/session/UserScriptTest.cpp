#include "bench/session/UserScript.h"

#include <gtest/gtest.h>

#include "common/Error.h"

namespace krv::tests {

using namespace bench;
namespace {

// Each step as LINE[word|word], or what is wrong with the text.
std::string Read(std::string_view text) {
    try {
        std::string steps;
        for (const UserStep& step :
             ReadUserScript(text, {{"ADDRESS", "tcp://here"}, {"FOLDER", "C:\\my waves"}})) {
            steps += std::to_string(step.line) + "[";
            for (const std::string& word : step.words) {
                steps += (steps.back() == '[' ? "" : "|") + word;
            }
            steps += "]";
        }
        return steps;
    } catch (const Error& error) {
        return error.Description();
    }
}

TEST(UserScript, HasAStepALine) {
    EXPECT_EQ(Read("# all of it\r\n\r\n  click  Connect \n\ttype Edit #1\nclose"),
              "3[click|Connect]4[type|Edit|#1]5[close]");
    EXPECT_EQ(Read(""), "");
}

TEST(UserScript, TakesQuotedWordsWhole) {
    EXPECT_EQ(Read(R"(type Box " two  words ")"), "1[type|Box| two  words ]");
    EXPECT_EQ(Read(R"(type Box "")"), "1[type|Box|]");
    EXPECT_EQ(Read(R"(message "one\ntwo" "three")"), "1[message|one\ntwo|three]");
    EXPECT_EQ(Read("say this\nsay \"that"), "line 2: a quote isn't closed");
}

TEST(UserScript, FillsInWhatItIsGiven) {
    EXPECT_EQ(Read("type Edit $ADDRESS/x"), "1[type|Edit|tcp://here/x]");
    EXPECT_EQ(Read(R"(type Box "$FOLDER\sineI.txt")"), "1[type|Box|C:\\my waves\\sineI.txt]");
    EXPECT_EQ(Read("expect textIRange $A$2:$B$9"), "1[expect|textIRange|$A$2:$B$9]");
    EXPECT_EQ(Read("\ntype Edit $PORT"), "line 2: no value is given for $PORT");
}

}  // namespace
}  // namespace krv::tests
