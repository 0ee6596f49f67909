#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/MemoryFiles.h"
#include "waveform/dialog/AutoName.h"
#include "waveform/dialog/DerivedFileName.h"

namespace krv::tests {

using namespace waveform;
namespace {

TEST(DerivedFileName, TakesTheFirstReplacementThatNamesAFile) {
    struct Case {
        const char* iFileName;
        std::vector<const char*> files;
        const char* qFile;
        const char* markerFile;
    };
    const std::vector<Case> cases{
        {R"(C:\wave\dataI.txt)",
         {R"(C:\wave\dataQ.txt)", R"(C:\wave\dataMarker.txt)"},
         R"(C:\wave\dataQ.txt)",
         R"(C:\wave\dataMarker.txt)"},
        // From the left, each letter in its own case, and the next one when there is no such file.
        {"sineI.txt", {"sqneI.txt", "sineQ.txt"}, "sqneI.txt", ""},
        {"sineI.txt", {"sQneI.txt", "sineQ.txt", "sineMarker.txt"}, "sineQ.txt", "sineMarker.txt"},
        {"i.bin", {"q.bin", "marker.bin"}, "q.bin", "marker.bin"},
        {"i.bin", {"Q.bin", "Marker.bin"}, "", ""},
        // Folder names stay as they are, with either separator.
        {R"(I\I\x.txt)", {R"(Q\I\x.txt)", R"(I\Q\x.txt)"}, "", ""},
        {"/data/I/aI.txt", {"/data/Q/aI.txt", "/data/I/aQ.txt"}, "/data/I/aQ.txt", ""},
        {R"(I/b\aI.txt)", {R"(I/b\aQ.txt)"}, R"(I/b\aQ.txt)", ""},
        // The extension belongs to the name.
        {"data.iii", {"data.iqi"}, "data.iqi", ""},
        {"datenü_I.txt", {"datenü_Q.txt"}, "datenü_Q.txt", ""},
        {"data.txt", {"data.txt"}, "", ""},
        {"", {}, "", ""},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.iFileName);
        MemoryFiles files;
        for (const char* file : each.files) {
            files.Put(file, "1");
        }
        EXPECT_EQ(DerivedFileName(each.iFileName, QFileRule, files), each.qFile);
        EXPECT_EQ(DerivedFileName(each.iFileName, MarkerFileRule, files), each.markerFile);
    }
}

TEST(AutoName, KeepsWhatEveryInstrumentTakes) {
    const std::vector<std::pair<std::string, std::string>> names{
        {R"(C:\wave forms\sine_1-a.b.txt)", "sine_1-a.b"},
        {"/data/dataI", "dataI"},
        {"two words (1).txt", "two_words__1_"},
        {"  padded.txt  ", "padded"},
        {"grün.txt", "gr_n"},
        {"波形𝄞I.txt", "___I"},
        {"cut\xE6\xB3.txt", "cut__"},
        {"\xFF\x80.txt", "__"},
        {"abcdefghijklmnopqrstuvw.txt", "abcdefghijklmnopqrstuvw"},
        {"abcdefghijklmnopqrstuvwx.txt", "abcdefghijklmnopqrstuvw"},
        {"äääääääääääääääääääääääää.txt", "_______________________"},
        {"", "WAVEFORM"},
        {R"(C:\folder\)", "WAVEFORM"},
        {".txt", "WAVEFORM"},
    };
    for (const auto& [file, name] : names) {
        EXPECT_EQ(AutoName(file), name) << file;
    }
}

}  // namespace
}  // namespace krv::tests
