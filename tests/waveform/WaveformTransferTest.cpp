#include "waveform/run/WaveformTransfer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/waveform/RunFixture.h"
#include "waveform/run/DestinationRules.h"
#include "waveform/run/InterleaveCodes.h"

namespace krv::tests {

using namespace waveform;
namespace {

TEST(DestinationRules, ANameHasOneTo23Characters) {
    EXPECT_EQ(DestinationNameFault(""), "KRV Destination File Name must be entered.");
    EXPECT_EQ(DestinationNameFault("W"), "");
    EXPECT_EQ(DestinationNameFault(std::string(23, 'W')), "");
    std::string umlauts;
    for (int count = 0; count < 23; ++count) {
        umlauts += "\xC3\xA4";
    }
    EXPECT_EQ(DestinationNameFault(umlauts), "") << "characters count, not bytes";
    EXPECT_EQ(DestinationNameFault(umlauts + "x"),
              "KRV Destination File Name must be less than 24 characters.");
}

TEST(DestinationRules, ASelectedFileIsNotOverwritten) {
    const std::string fault =
        "KRV Destination File Name is the same as the KRV's currently selected arb file.\r\n"
        "Enter a different file name or deselect this file from the KRV front panel.";
    EXPECT_EQ(SelectedFileFault("WAVE", "wave"), fault);
    EXPECT_EQ(SelectedFileFault("WAVE", "WAVE"), fault);
    for (const char* other : {"", "WAV", "WAVE1", "AWAVE"}) {
        EXPECT_EQ(SelectedFileFault("WAVE", other), "") << other;
    }
}

TEST(InterleaveCodes, FillsTheShorterChannelWithZeroCodesAndSeparatesThemAgain) {
    const auto expectInterleaved = [](const Codes& i, const Codes& q, std::int16_t zero,
                                      const Codes& expected) {
        // What something else holds, too, stays where it is.
        for (const bool qIsHeld : {false, true}) {
            SharedCodes iCodes = Shared(i);
            SharedCodes qCodes = Shared(q);
            const SharedCodes held = qIsHeld ? qCodes : SharedCodes();
            SampleBuffer<std::int16_t> interleaved = InterleaveCodes(iCodes, qCodes, zero);
            EXPECT_TRUE(std::ranges::equal(interleaved.Span(), expected));
            EXPECT_TRUE(iCodes.Empty());
            EXPECT_EQ(CodesOf(qCodes), qIsHeld ? q : Codes());
            SeparateInterleaved(interleaved, iCodes, i.size(), qCodes, q.size());
            EXPECT_EQ(CodesOf(iCodes), i);
            EXPECT_EQ(CodesOf(qCodes), q);
            EXPECT_TRUE(interleaved.Empty());
        }
    };
    const Codes three{1, 2, 3};
    const Codes one{-9};
    expectInterleaved(three, three, 0, {1, 1, 2, 2, 3, 3});
    expectInterleaved(three, one, 8192, {1, -9, 2, 8192, 3, 8192});
    expectInterleaved(one, three, 0, {-9, 1, 0, 2, 0, 3});
    expectInterleaved({}, {}, 0, {});
    // More than memory is given back in one go, to an odd place and with an end within a block.
    Codes many(300'001);
    Codes fewer(170'000);
    Codes expected;
    for (std::size_t point = 0; point < many.size(); ++point) {
        many[point] = static_cast<std::int16_t>(point % 30'011);
        expected.push_back(many[point]);
        expected.push_back(7);
        if (point < fewer.size()) {
            fewer[point] = static_cast<std::int16_t>(-many[point]);
            expected.back() = fewer[point];
        }
    }
    expectInterleaved(many, fewer, 7, expected);
}

class WaveformTransferTest : public RunFixture {
 protected:
    WaveformTransferTest() { Convert(false); }

    bool Transfer() {
        return WaveformTransfer(plan, services, codes, record).CheckDestinationAndTransfer();
    }
    // A model with codes of its family and, where wanted, a separate Q source.
    void Connect(const std::string& model, bool useQ) {
        RunFixture::Connect(model);
        Convert(useQ);
    }

 private:
    void Convert(bool useQ) {
        plan.useQ = useQ;
        codes = {.isNewModel = plan.instrument.isNewModel,
                 .i = Shared({1, 2, 3}),
                 .q = Shared({7, 8}),
                 .markers = Shared({0, 1, 15})};
    }
};

TEST_F(WaveformTransferTest, EachModelIsWrittenWithItsCalls) {
    struct Case {
        const char* model;
        bool useQ;
        Codes i, q, interleaved, markers;
    };
    const std::vector<Case> cases{
        {"M7714B", false, {1, 2, 3}, {}, {}, {}},
        {"M7714B", true, {1, 2, 3}, {7, 8}, {}, {}},
        {" M7718C ", false, {}, {}, {1, 2, 3}, {0, 1, 15}},
        {" M7718C ", true, {}, {}, {1, 7, 2, 8, 3, 0}, {0, 1, 15}},
        {"M9920D", false, {}, {}, {1, 2, 3}, {0, 1, 15}},
        {"M9920D", true, {}, {}, {1, 7, 2, 8, 3, 8192}, {0, 1, 15}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(std::string(test.model) + (test.useQ ? " with Q" : ""));
        Connect(test.model, test.useQ);
        server->ICodes = server->QCodes = server->Interleaved = server->Markers = {};
        EXPECT_TRUE(Transfer());
        EXPECT_EQ(server->ICodes, test.i);
        EXPECT_EQ(server->QCodes, test.q);
        EXPECT_EQ(server->Interleaved, test.interleaved);
        EXPECT_EQ(server->Markers, test.markers);
        EXPECT_EQ(CodesOf(codes.i), (Codes{1, 2, 3}));
        EXPECT_EQ(CodesOf(codes.q), (Codes{7, 8}));
    }
    EXPECT_EQ(Of("["), Lines{});
}

TEST_F(WaveformTransferTest, TheQueueIsEmptiedFirstAndTheTimesAreShown) {
    server->Errors = {{-113, "stale"}, {-410, "stale too"}};
    plan.destination = "NAME";
    record.expectedSeconds = 125;
    desktop.Clock.SecondOfDay = 23 * 3600 + 59 * 60 + 58;
    desktop.Clock.StepMs = 40;
    EXPECT_TRUE(Transfer());
    EXPECT_EQ(journal,
              (Lines{"> ReadError", "> ReadError", "> ReadError",
                     "line2 \"Download started at 23:59:58 | Estimated completion at 00:02:03\"",
                     "row2 \"Downloading waveform to the instrument...\"", "> DownloadInterleaved",
                     "> DownloadMarkers", "row2 \"\"", "> ReadError"}));
    EXPECT_EQ(server->Calls[3], "DownloadInterleaved NAME");
    EXPECT_EQ(record.destinationName, "NAME");
    EXPECT_TRUE(record.transferred);
    EXPECT_EQ(record.transferMs, 40);
    EXPECT_TRUE(dialog.CommandCancel.Enabled);
    EXPECT_FALSE(dialog.TextProgress[1].Visible);
}

TEST_F(WaveformTransferTest, AForbiddenNameSendsNothing) {
    server->SelectedName = "wave";
    server->Selected = true;
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(Of("[").size(), 1U);
    plan.destination = "";
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(Of("[").back(), "[!] Download: KRV Destination File Name must be entered. (OK)");
    EXPECT_EQ(Of("> Down"), Lines{});
    server->Selected = false;
    plan.destination = "WAVE";
    EXPECT_TRUE(Transfer()) << "no file is selected for playing";
}

TEST_F(WaveformTransferTest, CodesThatTheFamilyDoesNotHaveAreNotSent) {
    const auto send = [&](const char* model, const Codes& i, const Codes& q) {
        Connect(model, !q.empty());
        codes.i = Shared(i);
        codes.q = Shared(q);
        journal.clear();
        return Transfer();
    };
    EXPECT_TRUE(send("M7714B", {0, 16383}, {16383, 0}));
    EXPECT_TRUE(send("M7718C", {-32768, 32767}, {}));
    EXPECT_FALSE(send("M7714B", {8192, 16384}, {5, -4095}));
    EXPECT_EQ(Of("["), Lines{"[!] Download: The codes run from -4095 to 16384, but the M7714B "
                             "takes 0 to 16383.  Nothing has been sent. (OK)"});
    EXPECT_FALSE(send("M9920D", {-1}, {}));
    EXPECT_EQ(Of("> Down"), Lines{});
}

TEST_F(WaveformTransferTest, AnotherInstrumentThanTheRunBeganWithGetsNothing) {
    server->InstrumentNumber = "US2";
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(desktop.MessageBoxes.Shown.back(),
              "[!] Download: Another instrument has been connected since the run was started: | "
              "M7718C, serial number US2, at tcp://127.0.0.1:5025 | instead of | M7718C, serial "
              "number US00000001, at tcp://127.0.0.1:5025 | Nothing has been sent. (OK)");
    server->InstrumentNumber = "US00000001";
    server->InstrumentModel = "M9920C";
    EXPECT_FALSE(Transfer());
    server->InstrumentModel = "M7718C";
    server->Alive = false;
    EXPECT_FALSE(Transfer());
    server->Connected = false;
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(desktop.MessageBoxes.Shown.back(), "[!] Download: No instrument is connected. (OK)");
    EXPECT_EQ(server->Calls, Lines{});
}

TEST_F(WaveformTransferTest, TheRunsInstrumentIsUsedToTheEnd) {
    const auto other = FakeServer::Make();
    other->Errors = {{-100, "of the other"}};
    server->OnCall = [&](const std::string& call) {
        if (call == "ArbFileSelected") {
            server->Other = other;
        }
    };
    EXPECT_TRUE(Transfer());
    EXPECT_EQ(other->Calls, Lines{});
    server->OnCall = nullptr;
}

TEST_F(WaveformTransferTest, AFailingCallIsShownAndTheQueueIsStillRead) {
    for (const char* call : {"DownloadIQ", "DownloadInterleaved", "DownloadMarkers"}) {
        SCOPED_TRACE(call);
        Connect(std::string(call) == "DownloadIQ" ? "M7714B" : " M7718C ", true);
        server->FailingCall = call;
        server->Errors = {};
        server->OnCall = [&](const std::string& name) {
            if (name == call) {
                server->Errors = {{-363, "Input buffer overrun"}};
            }
        };
        journal.clear();
        record = {};
        EXPECT_FALSE(Transfer());
        EXPECT_EQ(Of("["), (Lines{"[!] Download: Time-out while writing (OK)",
                                  "[!] Download: Instrument error -363 | Input buffer overrun "
                                  "(OK)"}));
        EXPECT_EQ(Of("row2").back(), "row2 \"\"");
        EXPECT_FALSE(record.transferred);
        EXPECT_TRUE(dialog.CommandCancel.Enabled);
        EXPECT_EQ(CodesOf(codes.i), (Codes{1, 2, 3}));
        EXPECT_EQ(CodesOf(codes.q), (Codes{7, 8}));
    }
}

TEST_F(WaveformTransferTest, InstrumentErrorsAreShownInTheirOrderAndFailTheTransfer) {
    server->ErrorsAfterTransfer = {{-350, "Queue overflow"}, {628, "DAC over range"}};
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(Of("["), (Lines{"[!] Download: Instrument error -350 | Queue overflow (OK)",
                              "[!] Download: Instrument error 628 | DAC over range (OK)"}));
    ASSERT_EQ(record.instrumentErrors.size(), 2U);
    EXPECT_EQ(record.instrumentErrors[1].number, 628);
    EXPECT_EQ(record.instrumentErrors[1].message, "DAC over range");
    EXPECT_TRUE(record.transferred);
}

TEST_F(WaveformTransferTest, AQueueThatCannotBeReadIsShownOnceAfterTheFirstFailure) {
    server->FailingCall = "DownloadInterleaved";
    bool written = false;
    server->OnCall = [&](const std::string& call) {
        written = written || call == "DownloadInterleaved";
        if (written && call == "ReadError") {
            throw Error(ErrorNumber::Unspecified, "Connection lost");
        }
    };
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(Of("["), (Lines{"[!] Download: Time-out while writing (OK)",
                              "[!] Download: Connection lost (OK)"}));
}

TEST_F(WaveformTransferTest, AnInstrumentThatNeverRunsOutOfErrorsIsGivenUp) {
    server->OnCall = [&](const std::string& call) {
        if (call == "ReadError") {
            server->Errors = {{-100, "again"}};
        }
    };
    EXPECT_FALSE(Transfer());
    EXPECT_EQ(Of("[").size(), 31U);
    EXPECT_NE(Of("[").back().find("The first 30 have been shown."), std::string::npos);
}

}  // namespace
}  // namespace krv::tests
