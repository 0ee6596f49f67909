#include "waveform/checks/WaveformConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "tests/support/FakeExcel.h"
#include "tests/support/FakeServer.h"
#include "tests/support/ScriptedDesktop.h"
#include "waveform/checks/MarkerPulse.h"
#include "waveform/dialog/frmDataTransfer.h"

namespace krv::tests {

using namespace waveform;
namespace {

using Values = std::vector<double>;
using Codes = std::vector<std::int16_t>;

void Store(SampleBuffer<double>& buffer, std::int32_t& count, const Values& values) {
    buffer.Reset(values.size());
    buffer.Resize(values.size());
    std::ranges::copy(values, buffer.Span().begin());
    count = static_cast<std::int32_t>(values.size());
}

Codes CodesOf(const SampleBuffer<std::int16_t>& buffer) {
    return {buffer.Span().begin(), buffer.Span().end()};
}

class WaveformConversionTest : public ::testing::Test {
 protected:
    static constexpr const char* New = "M7718C";
    static constexpr const char* Old = "M7711B";

    WaveformConversionTest() : m_dialog(m_desktop.Services()) {
        m_dialog.instrServer = m_server;
        m_dialog.Caption = waveform::frmDataTransfer::Title;
        for (forms::ComboBox* box : {&m_dialog.cboWaveformType, &m_dialog.cboWaveformTypeSS}) {
            box->Items = std::vector<std::string>{"Waveform", "14-bit", "16-bit"};
        }
    }

    // --- what the user has chosen; the data follows, as it does in a run -------------------------
    void Files(const char* model, int type = waveform::WaveformTypeIndex::Scalable) {
        Choose(model, m_dialog.optFileFolders);
        m_dialog.cboWaveformType.ListIndex = type;
    }
    void Cells(const char* model, int type = waveform::WaveformTypeIndex::Scalable) {
        Choose(model, m_dialog.optSpreadsheet);
        m_dialog.cboWaveformType.ListIndex = type;
        m_dialog.cboWaveformTypeSS.ListIndex = type;
    }
    void I(const Values& values) {
        Store(m_dialog.Data.IData, m_dialog.Data.INumPoints, values);
        Pulse(0, 0, values.size());
    }
    void Q(const Values& values) {
        Store(m_dialog.Data.QData, m_dialog.Data.QNumPoints, values);
        m_dialog.Data.UseQData = true;
    }
    void IRange(const std::string& text) {
        m_dialog.Data.IRange = m_excel.ResolveRange(text);
        m_dialog.Data.IRangeCount = m_dialog.Data.IRange->CellCount();
        Pulse(0, 0, static_cast<std::size_t>(m_dialog.Data.IRangeCount));
    }
    void QRange(const std::string& text) {
        m_dialog.Data.QRange = m_excel.ResolveRange(text);
        m_dialog.Data.QRangeCount = m_dialog.Data.QRange->CellCount();
        m_dialog.Data.UseQData = true;
    }
    void Pulse(std::int16_t start, std::int16_t length, std::size_t count) {
        m_dialog.chkMarkerSource.Value = false;
        m_dialog.TextMarkerStart.Text = std::to_string(start);
        m_dialog.TextMarkerLength.Text = std::to_string(length);
        waveform::BuildMarkerPulse(m_dialog.Data.MarkerData, start, length,
                                   static_cast<std::int32_t>(count));
    }
    void MarkerFile(const Values& values) {
        m_dialog.chkMarkerSource.Value = true;
        Store(m_dialog.Data.MarkerData, m_dialog.Data.MarkerNumPoints, values);
    }

    // The message box that the check step shows; "ready" when the codes are.
    std::string Run() {
        auto& shown = m_desktop.MessageBoxes.Shown;
        shown.clear();
        const bool ready = m_dialog.CheckAndConvertWaveform();
        EXPECT_LE(shown.size(), 1u);
        if (!ready) {
            EXPECT_TRUE(m_dialog.Codes.IDacData.Empty());
            EXPECT_TRUE(m_dialog.Codes.QDacData.Empty());
        }
        if (shown.empty()) {
            return ready ? "ready" : "silent";
        }
        return shown.front() + (ready ? " -> ready" : "");
    }
    Codes ICodes() { return CodesOf(m_dialog.Codes.IDacData); }
    Codes QCodes() { return CodesOf(m_dialog.Codes.QDacData); }
    Codes Markers() { return CodesOf(m_dialog.Codes.MarkerDacData); }

    // A box with a bad value's message.
    static std::string Bad(const std::string& text) {
        return "[!] Download Waveform to KRV: " + text + " (OK)";
    }
    // `head`, then zeros up to the count.
    static Values Padded(Values head, std::size_t count = 120, double rest = 0) {
        head.resize(count, rest);
        return head;
    }

    ScriptedDesktop m_desktop;
    std::shared_ptr<FakeServer> m_server = FakeServer::Make();
    FakeExcel m_excel;
    waveform::frmDataTransfer m_dialog;

 private:
    void Choose(const char* model, forms::OptionButton& source) {
        m_server->ModelName = model;
        source.Value = true;
        m_dialog.TextScaleFactor.Text = std::string("100");
        m_dialog.Data = waveform::WaveformData();
    }
};

TEST_F(WaveformConversionTest, RulesRefuseWarnAndLetPass) {
    Files(Old);
    I(Values(15));
    EXPECT_EQ(Run(),
              "[stop] Download Waveform to KRV: The I-Data contains 15 data points. | "
              "The I (or I and Q)-Data must contain at least 16 points. | "
              "The I-Data must contain an even number of points. (OK)");
    I(Values(16));
    EXPECT_EQ(Run(), "ready");

    Files(New);
    I(Values(100));
    Q(Values(102));
    const std::string question =
        "[!] Download Waveform to KRV: The I-Data contains 100 data points. | The Q-Data contains "
        "102 data points. | The I- and Q-Data should contain the same number of points. |  | Do "
        "you want to continue? (Yes/No)";
    m_desktop.MessageBoxes.Answers = {ports::MessageAnswer::No};
    EXPECT_EQ(Run(), question);
    EXPECT_EQ(m_dialog.Data.INumPoints, 100);
    EXPECT_EQ(m_dialog.Data.IData.Size(), 100u);
    EXPECT_EQ(Run(), question + " -> ready");
    EXPECT_EQ(QCodes().size(), 102u);

    Pulse(60, 43, 100);
    m_dialog.Data.QNumPoints = 100;
    EXPECT_NE(Run().find("exceeds the number of points in the waveform."), std::string::npos);
    Pulse(60, 40, 100);
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(std::ranges::count(Markers(), 1), 40);
    EXPECT_EQ(Markers().size(), 100u);
}

TEST_F(WaveformConversionTest, ScalesToTheModelsRange) {
    Files(New);
    I(Padded({0.5, -0.5, 0, 0.25}));
    EXPECT_EQ(Run(), "ready");
    EXPECT_TRUE(m_dialog.Codes.IsNewModel);
    Codes codes = ICodes();
    codes.resize(4);
    EXPECT_EQ(codes, (Codes{32767, -32767, 0, 16384}));
    EXPECT_EQ(m_dialog.Codes.SmallestCode, -32767);
    EXPECT_EQ(m_dialog.Codes.LargestCode, 32767);
    EXPECT_TRUE(QCodes().empty());
    EXPECT_EQ(Markers(), Codes(120, 0));

    // Its data is like an old model's, whatever call sends it.
    Files("M9920D");
    I(Padded({0.5, -0.5, 0, 0.25}, 16));
    Q(Padded({0.1}, 16));
    EXPECT_EQ(Run(), "ready");
    EXPECT_FALSE(m_dialog.Codes.IsNewModel);
    codes = ICodes();
    codes.resize(4);
    EXPECT_EQ(codes, (Codes{16383, 1, 8192, 12288}));
    EXPECT_EQ(QCodes().front(), 9830) << "I and Q share one peak";
    EXPECT_EQ(m_dialog.Codes.SmallestCode, 1);

    m_dialog.TextScaleFactor.Text = std::string("-50");
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes().front(), 4096);
    I(Values(16));
    Q(Values(16));
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes(), Codes(16, 8192));
}

TEST_F(WaveformConversionTest, InternalValuesSuitTheModel) {
    constexpr int Refused = 99999;
    struct Row {
        const char* model;
        int type;
        double value;
        int iCode;
        int qCode;
    };
    const int fourteen = waveform::WaveformTypeIndex::Internal14;
    const int sixteen = waveform::WaveformTypeIndex::Internal16;
    const std::vector<Row> rows{
        {New, sixteen, 65535, -1, Refused},       {New, sixteen, -1, -1, -1},
        {New, sixteen, 65536, Refused, Refused},  {New, sixteen, -32769, Refused, Refused},
        {New, fourteen, 0, -32768, -32768},       {New, fourteen, 16383, 32764, 32764},
        {New, fourteen, 16384, Refused, Refused}, {Old, fourteen, 16383, 16383, 16383},
        {Old, fourteen, 16384, Refused, Refused}, {Old, sixteen, 32767, 16383, Refused},
        {Old, sixteen, -32768, 0, Refused},       {Old, sixteen, 6, 8194, 8194},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.model) + " type " + std::to_string(row.type) + " value " +
                     std::to_string(row.value));
        Files(row.model, row.type);
        I(Padded({row.value}, 120, 8192));
        EXPECT_EQ(Run(), row.iCode == Refused ? Bad("Invalid data point in I (and Q)-Data. | "
                                                    "Invalid data at point 1")
                                              : "ready");
        EXPECT_EQ(ICodes().empty() ? Refused : ICodes().front(), row.iCode);
        I(Values(120, 8192));
        Q(Padded({8192, row.value}, 120, 8192));
        EXPECT_EQ(Run(), row.qCode == Refused
                             ? Bad("Invalid data point in Q-Data. | Invalid data at point 2")
                             : "ready");
        EXPECT_EQ(QCodes().empty() ? Refused : QCodes().at(1), row.qCode);
    }
}

TEST_F(WaveformConversionTest, NamesTheFirstBadPointOfAFile) {
    const double infinity = std::numeric_limits<double>::infinity();
    Files(New);
    Values values = Padded({}, 5000);
    values[4500] = infinity;
    I(values);
    EXPECT_EQ(Run(), Bad("Invalid data point in I (and Q)-Data. | Invalid data at point 4501"));
    values[4500] = 1;
    I(values);
    Q(Padded({0, -infinity}, 5000));
    EXPECT_EQ(Run(), Bad("Invalid data point in Q-Data. | Invalid data at point 2"));
    m_dialog.Data.UseQData = false;
    m_dialog.TextScaleFactor.Text = std::string("150");
    EXPECT_EQ(Run(),
              Bad("Invalid data point in I (or I and Q)-Data. | Invalid data at point 4501"));
    m_dialog.TextScaleFactor.Text = std::string("full");
    EXPECT_EQ(Run(), Bad("The Scale factor is not numeric."));

    // The final step may refuse a code that stands in front of one that the check refuses.
    Files(New, waveform::WaveformTypeIndex::Internal14);
    I(Padded({0, 16384, 65536}));
    EXPECT_EQ(Run(), Bad("Invalid data point in I (and Q)-Data. | Invalid data at point 2"));
    // Fewer values than counted would be read from beyond the array.
    m_dialog.Data.INumPoints = 122;
    EXPECT_EQ(Run(), Bad("Subscript out of range"));
}

TEST_F(WaveformConversionTest, MarkersHaveTheModelsBits) {
    Files(New);
    I(Values(120));
    Values markers{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    MarkerFile(markers);
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(Markers(), Codes(markers.begin(), markers.end()));
    for (const double bad : {16.0, 255.0, 256.0, -1.0}) {
        markers[7] = bad;
        MarkerFile(markers);
        EXPECT_EQ(Run(), Bad("Invalid data point in Marker-Data. | Invalid data at point 8"));
    }
    Files(Old);
    I(Values(16));
    MarkerFile({7, 4, 3});
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(Markers(), (Codes{3, 0, 3}));
}

TEST_F(WaveformConversionTest, CellsOfEveryNumberKindAreConverted) {
    Cells(New);
    m_excel.PutColumn(1, Values(120));
    m_excel.Cells[{2, 1}] = std::int16_t{-2};
    m_excel.Cells[{3, 1}] = std::int32_t{1};
    m_excel.Cells[{120, 1}] = 0.5F;
    IRange("A1:A120");
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes().at(1), -32767);
    EXPECT_EQ(ICodes().at(2), 16384);
    EXPECT_EQ(ICodes().at(119), 8192);

    m_excel.Cells[{1, 3}] = 1.0;
    IRange("A1:A121");
    m_excel.Cells[{121, 1}] = 0.0;
    QRange("C1");
    EXPECT_EQ(Run(),
              "[!] Download Waveform to KRV: The I- and Q-Data should contain the same number of "
              "points. |  | Do you want to continue? (Yes/No) -> ready");
    EXPECT_EQ(QCodes(), Codes{16384});
}

TEST_F(WaveformConversionTest, OtherCellsAreRefusedWithTheirAddress) {
    const std::vector<Value> others{EmptyValue{},     NullValue{},         true,
                                    CurrencyValue{1}, DateValue{1},        ErrorCodeValue{2007},
                                    std::string("1"), std::string("seven")};
    m_excel.PutColumn(1, Values(5000, 1));
    m_excel.PutColumn(2, Values(5000, 1));
    const std::string numeric = " | All cells must be numeric. | Invalid data cell at:  ";
    const std::string integers =
        " | All cells must be integers in the range 0 to 65535. | Invalid data cell at:  ";
    for (const Value& other : others) {
        SCOPED_TRACE(other.index());
        m_excel.Cells[{4100, 1}] = other;
        Cells(New);
        IRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + numeric + "$A$4100"));
        Cells(Old, waveform::WaveformTypeIndex::Internal16);
        IRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + integers + "$A$4100"));
        Cells(New);
        IRange("B1:B5000");
        QRange("A1:A5000");
        EXPECT_EQ(Run(), Bad("Invalid data cell in Q-Data." + numeric + "$A$4100"));
    }
    m_dialog.Data.UseQData = false;
    m_dialog.TextScaleFactor.Text = std::string("200");
    EXPECT_EQ(Run(), Bad("Invalid data cell in I (or I and Q)-Data." + numeric + "$B$1"));
    // A number out of range in front of the text is the first bad cell.
    Cells(New, waveform::WaveformTypeIndex::Internal16);
    m_excel.Cells[{4099, 1}] = 70000.0;
    IRange("A1:A5000");
    EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + integers + "$A$4099"));
    // The file page's type, too, makes the text speak of integers.
    Cells(New);
    m_dialog.cboWaveformType.ListIndex.Preset(waveform::WaveformTypeIndex::Internal14);
    IRange("A1:A5000");
    EXPECT_EQ(Run(), Bad("Invalid data cell in I (and Q)-Data." + integers + "$A$4100"));
}

TEST_F(WaveformConversionTest, ProgressMovesAndPollsEvery4096Values) {
    Files(New);
    I(Values(10000, 1));
    Q(Values(10000, 1));
    std::vector<float> seen;
    const auto look = [&] { seen.push_back(m_dialog.Callback1().ProgressBar1[1].Value); };
    for (int count = 0; count < 8; ++count) {
        m_desktop.Screen.Then(look);
    }
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(m_dialog.Callback1().Label1[1].Caption.Get(), "Scaling waveform data...");
    EXPECT_EQ(seen, (std::vector<float>{4096, 8192, 14096, 18192, 24096, 28192, 34096, 38192}));
    EXPECT_EQ(m_dialog.Callback1().ProgressBar1[1].Max, 40000.0F);
    EXPECT_EQ(m_dialog.Callback1().ProgressBar1[1].Value, 40000.0F);

    Files(New, waveform::WaveformTypeIndex::Internal16);
    I(Values(10000, 1));
    const int before = m_desktop.Screen.PumpCount;
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(m_desktop.Screen.PumpCount - before, 2);
    EXPECT_EQ(m_dialog.Callback1().Label1[1].Caption.Get(), "Checking DAC values...");
    EXPECT_EQ(m_dialog.Callback1().ProgressBar1[1].Max, 10000.0F);
}

class WaveformConversionCancelTest : public WaveformConversionTest,
                                     public ::testing::WithParamInterface<int> {};

// Two polls a channel and pass: I and Q measured, I and Q scaled.
TEST_P(WaveformConversionCancelTest, EndsItSilentlyInThePass) {
    Files(New);
    I(Values(10000, 1));
    Q(Values(10000, 1));
    for (int poll = 0; poll < GetParam(); ++poll) {
        m_desktop.Screen.Then([] {});
    }
    m_desktop.Screen.Then([&] { m_desktop.Screen.Click(m_dialog.Callback1().CommandCancel); });
    const int before = m_desktop.Screen.PumpCount;
    EXPECT_EQ(Run(), "silent");
    EXPECT_EQ(m_desktop.Screen.PumpCount - before, GetParam() + 1);
    EXPECT_EQ(m_dialog.Data.IData.Size(), 10000u);
    EXPECT_EQ(m_dialog.Data.QData.Size(), 10000u);
}

INSTANTIATE_TEST_SUITE_P(Polls, WaveformConversionCancelTest, ::testing::Values(0, 3, 5, 7));

// The user may edit the sheet while events are let through.
TEST_F(WaveformConversionTest, BothPassesSeeTheSameCells) {
    Cells(New);
    m_excel.PutColumn(1, Values(5000, 1));
    IRange("A1:A5000");
    m_desktop.Screen.Then([&] { m_excel.Cells[{7, 1}] = 1000.0; });
    EXPECT_EQ(Run(), "ready");
    EXPECT_EQ(ICodes(), Codes(5000, 32767));
}

}  // namespace
}  // namespace krv::tests
