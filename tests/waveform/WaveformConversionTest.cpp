#include "waveform/checks/WaveformConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/waveform/RunFixture.h"
#include "waveform/readers/MarkerPulse.h"

namespace krv::tests {

using namespace waveform;
namespace {

class WaveformConversionTest : public RunFixture {
 protected:
    static constexpr const char* New = "M7718C";
    static constexpr const char* Old = "M7711B";

    // --- what the user has chosen; the data follows, as it does in a run -------------------------
    void Files(const char* model, WaveformType type = WaveformType::Scalable) {
        Choose(model, SourceKind::Files, type);
    }
    void Cells(const char* model, WaveformType type = WaveformType::Scalable) {
        Choose(model, SourceKind::Cells, type);
        plan.speaksOfIntegers = type != WaveformType::Scalable;
    }
    // Numbers as a text file gives them, codes as a binary file does.
    template <class Values>
    void I(const Values& values) {
        data.i = ChannelOf(values);
        Pulse(0, 0, values.size());
    }
    template <class Values>
    void Q(const Values& values) {
        data.q = ChannelOf(values);
        plan.useQ = true;
    }
    void IRange(const std::string& text) {
        data.iRange = RangeOf(text);
        Pulse(0, 0, static_cast<std::size_t>(data.iRange.count));
    }
    void QRange(const std::string& text) {
        data.qRange = RangeOf(text);
        plan.useQ = true;
    }
    void Pulse(std::int16_t start, std::int16_t length, std::size_t count) {
        plan.markersFromFile = false;
        data.pulse = {start, length};
        data.markers.values = BuildMarkerPulse(start, length, static_cast<std::int32_t>(count));
    }
    template <class Values>
    void MarkerFile(const Values& values) {
        plan.markersFromFile = true;
        data.markers = ChannelOf(values);
    }

    // The message box that the check step shows; "ready" when the codes are.
    std::string Run() {
        auto& shown = desktop.MessageBoxes.Shown;
        shown.clear();
        auto converted = CheckAndConvertWaveform(plan, data, services);
        const bool ready = converted.has_value();
        codes = ready ? std::move(*converted) : DacCodes();
        EXPECT_LE(shown.size(), 1U);
        if (shown.empty()) {
            return ready ? "ready" : "silent";
        }
        return shown.front() + (ready ? " -> ready" : "");
    }
    Codes ICodes() { return CodesOf(codes.i); }
    Codes QCodes() { return CodesOf(codes.q); }
    Codes Markers() { return CodesOf(codes.markers); }

    static constexpr const char* TooLarge = "The magnitude of the Scale Factor must be <= 100.";
    // A box with a bad value's message.
    static std::string Bad(const std::string& text) { return "[stop] Download: " + text + " (OK)"; }
    // `head`, then the rest up to the count.
    template <class T>
    static std::vector<T> Padded(std::vector<T> head, std::size_t count = 120, T rest = 0) {
        head.resize(count, rest);
        return head;
    }

 private:
    void Choose(const char* model, SourceKind source, WaveformType type) {
        Connect(model);
        plan.source = source;
        plan.type = type;
        plan.useQ = false;
        plan.speaksOfIntegers = false;
        plan.scalePercent = 100;
        data = WaveformData();
    }
    CellRange RangeOf(const std::string& text) {
        const auto cells = excel.ResolveRange(text);
        return {cells, cells->CellCount()};
    }
};

TEST_F(WaveformConversionTest, ScalesToTheModelsRange) {
    Files(New);
    I(Padded<double>({0.5, -0.5, 0, 0.25}));
    EXPECT_EQ(Run(), "ready");
    EXPECT_TRUE(codes.isNewModel);
    Codes found = ICodes();
    found.resize(4);
    EXPECT_EQ(found, (Codes{32767, -32767, 0, 16384}));
    EXPECT_EQ(codes.smallest, -32767);
    EXPECT_EQ(codes.largest, 32767);
    EXPECT_TRUE(QCodes().empty());
    EXPECT_EQ(Markers(), Codes(120, 0));

    // Its data is like an old model's, whatever call sends it.
    Files("M9920D");
    I(Padded<double>({0.5, -0.5, 0, 0.25}, 16));
    Q(Padded<double>({0.1}, 16));
    EXPECT_EQ(Run(), "ready");
    EXPECT_FALSE(codes.isNewModel);
    found = ICodes();
    found.resize(4);
    EXPECT_EQ(found, (Codes{16383, 1, 8192, 12288}));
    EXPECT_EQ(QCodes().front(), 9830) << "I and Q share one peak";
    EXPECT_EQ(codes.smallest, 1);

    plan.scalePercent = -50;
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes().front(), 4096);
    I(Numbers(16));
    Q(Numbers(16));
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes(), Codes(16, 8192));
}

TEST_F(WaveformConversionTest, InternalValuesSuitTheModelWhetherTextOrBinary) {
    constexpr int Refused = 99999;
    struct Row {
        const char* model;
        WaveformType type;
        int value;
        int iCode;
        int qCode;
    };
    const auto fourteen = WaveformType::Internal14;
    const auto sixteen = WaveformType::Internal16;
    const std::vector<Row> cases{
        {New, sixteen, 65535, -1, Refused},       {New, sixteen, -1, -1, -1},
        {New, sixteen, 65536, Refused, Refused},  {New, sixteen, -32769, Refused, Refused},
        {New, fourteen, 0, -32768, -32768},       {New, fourteen, 16383, 32764, 32764},
        {New, fourteen, 16384, Refused, Refused}, {New, fourteen, -1, Refused, Refused},
        {Old, fourteen, 16383, 16383, 16383},     {Old, fourteen, 16384, Refused, Refused},
        {Old, sixteen, 32767, 16383, Refused},    {Old, sixteen, -32768, 0, Refused},
        {Old, sixteen, 65535, 8192, Refused},     {Old, sixteen, 6, 8194, 8194},
    };
    const auto codeAt = [](const Codes& found, std::size_t index) {
        return found.empty() ? Refused : found.at(index);
    };
    const auto expect = [&](const Row& row, const auto& values, const auto... isUnsigned) {
        Files(row.model, row.type);
        I(values);
        data.i = ChannelOf(values, isUnsigned...);
        EXPECT_EQ(Run(), row.iCode == Refused ? Bad("Invalid data point in I (and Q)-Data. | "
                                                    "Invalid data at point 2")
                                              : "ready");
        EXPECT_EQ(codeAt(ICodes(), 1), row.iCode);
        EXPECT_EQ(row.iCode == Refused, codes.smallest == 0 && codes.largest == 0);
        I(Numbers(120, 8192));
        Q(values);
        data.q = ChannelOf(values, isUnsigned...);
        EXPECT_EQ(Run(), row.qCode == Refused
                             ? Bad("Invalid data point in Q-Data. | Invalid data at point 2")
                             : "ready");
        EXPECT_EQ(codeAt(QCodes(), 1), row.qCode);
    };
    for (const Row& row : cases) {
        SCOPED_TRACE(std::string(row.model) + " type " +
                     std::to_string(static_cast<int>(row.type)) + " value " +
                     std::to_string(row.value));
        expect(row, Padded<double>({8192, static_cast<double>(row.value)}, 120, 8192));
        if (row.value >= INT16_MIN && row.value <= UINT16_MAX) {
            SCOPED_TRACE("binary");
            const auto bits = static_cast<std::int16_t>(row.value);
            expect(row, Padded<std::int16_t>({8192, bits}, 120, 8192), row.value > INT16_MAX);
        }
    }
}

TEST_F(WaveformConversionTest, BinaryValuesThatAreCodesAlreadyAreNotCopied) {
    const auto isShared = [](const SharedCodes& made, const Channel& channel) {
        return made.Span().data() == channel.Internal()->codes.Span().data();
    };
    Files(New, WaveformType::Internal16);
    I(Codes(10000, -7));
    EXPECT_EQ(Run(), "ready");
    EXPECT_TRUE(isShared(codes.i, data.i));
    EXPECT_TRUE(isShared(codes.markers, data.markers));
    EXPECT_EQ(codes.markers.Size(), 10000U);
    EXPECT_EQ(codes.smallest, -7);
    EXPECT_EQ(codes.largest, -7);
    data = {};
    EXPECT_EQ(ICodes(), Codes(10000, -7)) << "the codes outlive the channel";

    Files(Old, WaveformType::Internal16);
    I(Codes(10000, -4));
    EXPECT_EQ(Run(), "ready");
    EXPECT_FALSE(isShared(codes.i, data.i));
    EXPECT_EQ(ICodes(), Codes(10000, 8191));
    EXPECT_EQ(codes.smallest, 8191);
    EXPECT_EQ(TextOf(data.i).substr(0, 5), "-4 -4") << "the values stay for the next run";
}

TEST_F(WaveformConversionTest, NamesTheFirstBadPointOfAFile) {
    const double infinity = std::numeric_limits<double>::infinity();
    Files(New);
    Numbers values = Padded<double>({}, 5000);
    values[4500] = infinity;
    I(values);
    EXPECT_EQ(Run(), Bad("Invalid data point in I (and Q)-Data. | Invalid data at point 4501"));
    values[4500] = 1;
    I(values);
    Q(Padded<double>({0, -infinity}, 5000));
    EXPECT_EQ(Run(), Bad("Invalid data point in Q-Data. | Invalid data at point 2"));
    plan.useQ = false;
    plan.scalePercent = 150;
    EXPECT_EQ(Run(), Bad(TooLarge));
    plan.scalePercent.reset();
    EXPECT_EQ(Run(), Bad("The Scale factor is not numeric."));

    // The final step may refuse a code that stands in front of one that the check refuses.
    Files(New, WaveformType::Internal14);
    I(Padded<double>({0, 16384, 65536}));
    EXPECT_EQ(Run(), Bad("Invalid data point in I (and Q)-Data. | Invalid data at point 2"));
    Codes binary(5000, 8192);
    binary[4500] = 16384;
    binary[4600] = -1;
    I(binary);
    EXPECT_EQ(Run(), Bad("Invalid data point in I (and Q)-Data. | Invalid data at point 4501"));
}

TEST_F(WaveformConversionTest, MarkersHaveTheModelsBits) {
    Files(New);
    I(Numbers(120));
    const Codes all{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    Numbers markers(all.begin(), all.end());
    const auto expect = [&](const auto& values, const Codes& expected) {
        MarkerFile(values);
        EXPECT_EQ(Run(), "ready");
        EXPECT_EQ(Markers(), expected);
    };
    expect(markers, all);
    expect(all, all);
    const std::string bad = Bad("Invalid data point in Marker-Data. | Invalid data at point 8");
    for (const double value : {16.0, 255.0, 256.0, -1.0}) {
        markers[7] = value;
        MarkerFile(markers);
        EXPECT_EQ(Run(), bad);
    }
    MarkerFile(Codes{0, 0, 0, 0, 0, 0, 0, 16});
    EXPECT_EQ(Run(), bad);
    Files(Old);
    I(Numbers(16));
    expect(Numbers{7, 4, 3}, Codes{3, 0, 3});
    expect(Codes{7, 4, 3}, Codes{3, 0, 3});
}

TEST_F(WaveformConversionTest, CellsOfEveryNumberKindAreConverted) {
    Cells(New);
    excel.PutColumn(1, Numbers(120));
    excel.Cells[{2, 1}] = std::int16_t{-2};
    excel.Cells[{3, 1}] = std::int32_t{1};
    excel.Cells[{120, 1}] = 0.5F;
    IRange("A1:A120");
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes().at(1), -32767);
    EXPECT_EQ(ICodes().at(2), 16384);
    EXPECT_EQ(ICodes().at(119), 8192);

    excel.Cells[{1, 3}] = 1.0;
    IRange("A1:A121");
    excel.Cells[{121, 1}] = 0.0;
    QRange("C1");
    EXPECT_EQ(Run(),
              "[!] Download: The I- and Q-Data should contain the same number of points. |  | Do "
              "you want to continue? (Yes/No) -> ready");
    EXPECT_EQ(QCodes(), Codes{16384});
}

TEST_F(WaveformConversionTest, OtherCellsAreRefusedWithTheirAddress) {
    const std::vector<Value> others{EmptyValue{},     NullValue{},         true,
                                    CurrencyValue{1}, DateValue{1},        ErrorCodeValue{2007},
                                    std::string("1"), std::string("seven")};
    excel.PutColumn(1, Numbers(5000, 1));
    excel.PutColumn(2, Numbers(5000, 1));
    const std::string numeric = " | All cells must be numeric. | Invalid data cell at:  ";
    const std::string integers =
        " | All cells must be integers in the range 0 to 65535. | Invalid data cell at:  ";
    for (const Value& other : others) {
        SCOPED_TRACE(other.index());
        excel.Cells[{4100, 1}] = other;
        Cells(New);
        IRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + numeric + "$A$4100"));
        Cells(Old, WaveformType::Internal16);
        IRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + integers + "$A$4100"));
        Cells(New);
        IRange("B1:B5000");
        QRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in Q-Data." + numeric + "$A$4100"));
    }
    plan.useQ = false;
    for (const double percent : {-100.001, 200.0}) {
        plan.scalePercent = percent;
        EXPECT_EQ(Run(), Bad(TooLarge)) << "no cell is to blame";
    }
    // A number out of range in front of the text is the first bad cell.
    Cells(New, WaveformType::Internal16);
    excel.Cells[{4099, 1}] = 70000.0;
    IRange("A1:A5000");
    EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + integers + "$A$4099"));
}

TEST_F(WaveformConversionTest, ProgressMovesAndPollsEvery4096Values) {
    Files(New);
    I(Numbers(10000, 1));
    Q(Numbers(10000, 1));
    std::vector<float> seen;
    const auto look = [&] { seen.push_back(dialog.ProgressBar1[1].Value); };
    for (int count = 0; count < 8; ++count) {
        desktop.Screen.Then(look);
    }
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(dialog.Label1[1].Caption.Get(), "Scaling waveform data...");
    EXPECT_EQ(seen, (std::vector<float>{4096, 8192, 14096, 18192, 24096, 28192, 34096, 38192}));
    EXPECT_EQ(dialog.ProgressBar1[1].Max, 40000.0F);
    EXPECT_EQ(dialog.ProgressBar1[1].Value, 40000.0F);

    Files(New, WaveformType::Internal16);
    const auto expectTwoPolls = [&] {
        const int before = desktop.Screen.PumpCount;
        EXPECT_EQ(Run(), "ready");
        EXPECT_EQ(desktop.Screen.PumpCount - before, 2);
        EXPECT_EQ(dialog.Label1[1].Caption.Get(), "Checking DAC values...");
        EXPECT_EQ(dialog.ProgressBar1[1].Max, 10000.0F);
        EXPECT_EQ(dialog.ProgressBar1[1].Value, 10000.0F);
    };
    I(Numbers(10000, 1));
    expectTwoPolls();
    I(Codes(10000, 1));
    expectTwoPolls();
    CancelAt(2);
    EXPECT_EQ(Run(), "silent");
}

// The user may edit the sheet while events are let through.
TEST_F(WaveformConversionTest, BothPassesSeeTheSameCells) {
    Cells(New);
    excel.PutColumn(1, Numbers(5000, 1));
    IRange("A1:A5000");
    desktop.Screen.Then([&] { excel.Cells[{7, 1}] = 1000.0; });
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes(), Codes(5000, 32767));
}

}  // namespace
}  // namespace krv::tests
