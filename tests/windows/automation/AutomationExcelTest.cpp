#include "windows/office/AutomationExcel.h"

#include "common/AsKind.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/ExcelModel.h"
#include "windows/automation/VariantValue.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::tests {
namespace {

class AutomationExcelTest : public AutomationTest {
 protected:
    ExcelModel m_model;

    std::shared_ptr<ports::ExcelHost> Excel() {
        return std::dynamic_pointer_cast<ports::ExcelHost>(
            windows::HostOf(m_model.Application.Get()));
    }
    std::shared_ptr<ports::Range> Range(const ExcelModel::Area& area) {
        m_model.Names[L"here"] = {area};
        return Excel()->ResolveRange("here");
    }
    // Each cell holds its row and column, e.g. 12.003 in row 12, column 3.
    void NumberCells() {
        m_model.Cell = [](long row, long column) { return _variant_t(row + column / 1000.0); };
    }
    static std::vector<Value> Read(ports::Range& range, std::size_t first, std::size_t count) {
        std::vector<Value> values(count);
        range.ReadValues(first, values);
        return values;
    }
};

TEST_F(AutomationExcelTest, TellsARangesShapeAndCellAddresses) {
    const auto block = Range({2, 3, 10, 4});
    EXPECT_EQ(block->AreaCount(), 1);
    EXPECT_EQ(block->RowCount(), 10);
    EXPECT_EQ(block->ColumnCount(), 4);
    EXPECT_EQ(block->CellCount(), 40);
    EXPECT_EQ(block->Address(), "$C$2:$F$11");
    EXPECT_EQ(block->CellAddress(0), "$C$2");
    EXPECT_EQ(block->CellAddress(7), "$F$3");
    m_model.Names[L"two"] = {{1, 1, 10, 1}, {1, 3, 10, 1}};
    EXPECT_EQ(Excel()->ResolveRange("two")->AreaCount(), 2);
}

TEST_F(AutomationExcelTest, ReadsAnySpanOfAnyShapeCellByCell) {
    NumberCells();
    const struct {
        ExcelModel::Area area;
        std::size_t first, count;
    } spans[] = {{{1, 1, 100, 1}, 0, 100}, {{5, 2, 100, 1}, 37, 20}, {{3, 1, 1, 90}, 0, 90},
                 {{3, 4, 1, 90}, 11, 60},  {{2, 2, 9, 7}, 0, 63},    {{2, 2, 9, 7}, 5, 40},
                 {{2, 2, 9, 7}, 15, 3},    {{2, 2, 9, 7}, 7, 14},    {{8, 8, 1, 1}, 0, 1}};
    for (const auto& [area, first, count] : spans) {
        const auto values = Read(*Range(area), first, count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto cell = static_cast<long>(first + i);
            const double expected = static_cast<double>(area.Row + cell / area.Columns) +
                                    static_cast<double>(area.Column + cell % area.Columns) / 1000.0;
            ASSERT_EQ(std::get<double>(values[i]), expected) << "cell " << cell;
        }
    }
}

TEST_F(AutomationExcelTest, ReadsManyCellsInFewBlocksOfBoundedSize) {
    NumberCells();
    const auto column = Range({1, 1, 200000, 1});
    const auto values = Read(*column, 0, 200000);
    EXPECT_EQ(std::get<double>(values[199999]), 200000.001);
    EXPECT_EQ(m_model.Reads, (std::vector<long>{65536, 65536, 65536, 3392}));
    m_model.Reads.clear();
    Read(*Range({1, 1, 1000, 300}), 299, 200000);
    EXPECT_EQ(m_model.Reads, (std::vector<long>{1, 65400, 65400, 65400, 3600, 199}));
}

TEST_F(AutomationExcelTest, KeepsTheKindsOfCellsApart) {
    const std::vector<Value> kinds{
        EmptyValue{},         std::string("1,5"),  1.5, true, DateValue{45000.5},
        CurrencyValue{15000}, ErrorCodeValue{2007}};
    m_model.Cell = [&](long row, long) {
        return windows::ToVariant(kinds[static_cast<std::size_t>(row) - 1]);
    };
    EXPECT_EQ(Read(*Range({1, 1, 7, 1}), 0, 7), kinds);
    for (long row = 1; row <= 7; ++row) {
        EXPECT_EQ(Read(*Range({row, 1, 1, 1}), 0, 1)[0], kinds[static_cast<std::size_t>(row) - 1]);
    }
}

TEST_F(AutomationExcelTest, PassesOnWhatExcelSaysAndSaysWhenItIsBusy) {
    EXPECT_EQ(ErrorOf([&] { Excel()->ResolveRange("A1:"); }),
              "1004 That name is not valid. (Microsoft Excel)");
    const auto silent = [](const ScriptedCall&) -> _variant_t {
        throw HostException{static_cast<HRESULT>(0x800A03EC), L"", L""};
    };
    m_model.Application->Members[L"InchesToPoints"] = silent;
    EXPECT_EQ(ErrorOf([&] { Excel()->InchesToPoints(1); }),
              "1004 \"InchesToPoints\" failed, and the application gave no reason (error "
              "0x800A03EC).  Check that the sheet or document is open and not protected, and that "
              "no cell is being edited, and try again.");
    m_model.Application->Members[L"InchesToPoints"] = [](const ScriptedCall&) -> _variant_t {
        throw CallFailure{static_cast<HRESULT>(0x800A03EC)};
    };
    EXPECT_EQ(ErrorOf([&] { Excel()->InchesToPoints(1); }).substr(0, 29),
              "1004 \"InchesToPoints\" failed,");
    m_model.Application->Members[L"Range"] = [](const ScriptedCall&) {
        return _variant_t(static_cast<IDispatch*>(nullptr));
    };
    EXPECT_EQ(ErrorOf([&] { Excel()->ResolveRange("A1"); }).substr(0, 26),
              "91 There is no range \"A1\" ");
    m_model.Application->Properties[L"ActiveCell"] = _variant_t(static_cast<IDispatch*>(nullptr));
    EXPECT_EQ(ErrorOf([&] { Excel()->ActiveCell(); }).substr(0, 50),
              "91 There is no active cell, as on a chart sheet.  ");
    for (const HRESULT busy :
         {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER, static_cast<HRESULT>(0x800AC472)}) {
        m_model.Application->Members[L"DisplayStatusBar"] = [=](const ScriptedCall&) -> _variant_t {
            throw CallFailure{busy};
        };
        const std::string error = ErrorOf([&] { Excel()->IsStatusBarDisplayed(); });
        EXPECT_NE(error.find("The application is busy and can't answer."), std::string::npos)
            << error;
    }
}

TEST_F(AutomationExcelTest, OnlyCellsAreASelection) {
    auto& selection = m_model.Application->Properties[L"Selection"];
    selection = ObjectVariant(m_model.MakeRange({{1, 1, 4, 1}}));
    EXPECT_EQ(Excel()->Selection()->Address(), "$A$1:$A$4");
    const _variant_t others[] = {ObjectVariant(NewScripted({{L"Name", L"Chart 1"}})), _variant_t(),
                                 _variant_t(static_cast<IDispatch*>(nullptr)), _variant_t(1.0)};
    for (const _variant_t& other : others) {
        selection = other;
        EXPECT_EQ(ErrorOf([&] { (void)Excel()->Selection(); }),
                  "13 The selection in the workbook is not a range of cells.");
    }
}

TEST_F(AutomationExcelTest, SetsStatusCursorAndAddIns) {
    auto& properties = m_model.Application->Properties;
    const ScriptedPointer addIn =
        NewScripted({{L"Name", L"krv.xla"}, {L"Path", L"C:\\Add ins"}, {L"Installed", false}});
    properties[L"AddIns"] = ExcelModel::Collection({NewScripted(), addIn}, L"Name");
    properties[L"DisplayStatusBar"] = true;
    properties[L"StatusBar"] = false;
    properties[L"Cursor"] = 2L;

    EXPECT_TRUE(Excel()->IsStatusBarDisplayed());
    Excel()->SetStatusBarText("Connecting...");
    Excel()->SetBusyCursor(false);
    const auto addIns = Excel()->AddIns();
    ASSERT_EQ(addIns.size(), 3U);
    EXPECT_EQ(addIns[1]->Name() + " in " + addIns[1]->Path(), "krv.xla in C:\\Add ins");
    addIns[1]->SetInstalled(true);

    EXPECT_STREQ(V_BSTR(&properties[L"StatusBar"]), L"Connecting...");
    EXPECT_EQ(V_I4(&properties[L"Cursor"]), -4143);
    EXPECT_EQ(V_BOOL(&addIn->Properties[L"Installed"]), VARIANT_TRUE);
}

TEST_F(AutomationExcelTest, KnowsHostsAndDocumentsByTheirOwnInterfaces) {
    const ScriptedPointer otherApplication = NewScripted({{L"Name", L"Word"}});
    const ScriptedPointer book = NewScripted({{L"Name", L"Book1"}});
    book->Answer(WorkbookId);
    book->Members[L"Application"] = [&](const ScriptedCall&) {
        return ObjectVariant(m_model.Application);
    };
    const ScriptedPointer sheet = NewScripted({{L"Parent", ObjectVariant(book)}});
    // What lies in Excel isn't a workbook for that.
    const ScriptedPointer chart =
        NewScripted({{L"Application", ObjectVariant(m_model.Application)}});

    EXPECT_TRUE(AsKind<ports::ExcelHost>(windows::HostOf(m_model.Application.Get())));
    EXPECT_EQ(ErrorOf([&] { AsKind<ports::ExcelHost>(windows::HostOf(otherApplication.Get())); }),
              "13 Type mismatch");
    for (const ScriptedPointer& own : {book, sheet}) {
        EXPECT_EQ(AsKind<ports::Workbook>(windows::DocumentOf(own.Get()))->Name(), "Book1");
    }
    const ScriptedPointer letter = NewScripted();
    letter->Answer(WordDocumentId);
    EXPECT_TRUE(AsKind<ports::WordDocument>(windows::DocumentOf(letter.Get())));
    for (const ScriptedPointer& other : {chart, letter, NewScripted()}) {
        EXPECT_EQ(ErrorOf([&] { AsKind<ports::Workbook>(windows::DocumentOf(other.Get())); }),
                  "13 Type mismatch");
    }
    const auto excel = AsKind<ports::Workbook>(windows::DocumentOf(book.Get()))->Application();
    EXPECT_EQ(windows::AutomationBehind(*excel), m_model.Application.Get());
    EXPECT_FALSE(windows::HostOf(nullptr) || windows::DocumentOf(nullptr));
    EXPECT_EQ(ErrorOf([] { windows::AutomationApplications().GetRunning("Excel.Application"); }),
              "429 There is no running \"Excel.Application\".");
}

class EventLog final : public ports::WorkbookEvents {
 public:
    void OnWorkbookActivate(ports::Workbook& activated) override {
        Note("activate " + activated.Name());
    }
    void OnWorkbookDeactivate(ports::Workbook& deactivated) override {
        Note("deactivate " + deactivated.Name());
    }
    std::string Events;
    std::function<void()> OnEvent = [] {};

 private:
    void Note(const std::string& event) {
        Events += event + ";";
        OnEvent();
    }
};

class WorkbookEventsTest : public AutomationExcelTest {
 protected:
    static constexpr DISPID Activate = 0x620;
    static constexpr DISPID Deactivate = 0x621;
    const ScriptedPointer m_book = NewScripted({{L"Name", L"Book1"}});
    EventLog m_log;
};

TEST_F(WorkbookEventsTest, ArriveUntilTheSubscriptionEnds) {
    auto subscription = Excel()->ReceiveWorkbookEvents(m_log);
    _variant_t direct = ObjectVariant(m_book);
    IDispatch* object = m_book.Get();
    VARIANT reference;
    V_VT(&reference) = VT_BYREF | VT_DISPATCH;
    V_DISPATCHREF(&reference) = &object;
    EXPECT_EQ(m_model.Application->Raise(Activate, {direct}), S_OK);
    EXPECT_EQ(m_model.Application->Raise(Deactivate, {reference}), S_OK);
    EXPECT_EQ(m_model.Application->Raise(0x61D, {direct, _variant_t(1L)}), S_OK);
    EXPECT_EQ(m_log.Events, "activate Book1;deactivate Book1;");
    for (const EventForm form : {EventForm::ByPosition, EventForm::Named}) {
        m_log.Events.clear();
        m_model.Application->Raise(Activate, {direct, _variant_t(1L), _variant_t(2L)}, form);
        EXPECT_EQ(m_log.Events, "activate Book1;");
    }

    const auto keptByExcel = m_model.Application->Sink;
    subscription.reset();
    EXPECT_FALSE(m_model.Application->Sink);
    m_model.Application->Sink = keptByExcel;
    EXPECT_EQ(m_model.Application->Raise(Activate, {direct}), S_OK);
    EXPECT_EQ(m_log.Events, "activate Book1;");
    m_model.Application->Sink.Reset();
}

TEST_F(WorkbookEventsTest, MayEndTheSubscriptionAndMayFail) {
    auto subscription = Excel()->ReceiveWorkbookEvents(m_log);
    m_log.OnEvent = [&] { subscription.reset(); };
    EXPECT_EQ(m_model.Application->Raise(Activate, {ObjectVariant(m_book)}), S_OK);
    EXPECT_FALSE(m_model.Application->Sink);

    subscription = Excel()->ReceiveWorkbookEvents(m_log);
    m_log.OnEvent = [] { throw Error(1004, "Refused"); };
    EXPECT_EQ(m_model.Application->Raise(Activate, {ObjectVariant(m_book)}),
              static_cast<HRESULT>(0x800A03EC));
    EXPECT_TRUE(FAILED(m_model.Application->Raise(Activate, {_variant_t(1.0)})));
}

TEST_F(WorkbookEventsTest, AreFoundUnderPlainAutomationToo) {
    m_model.Application->Events = IID_IDispatch;
    const auto subscription = Excel()->ReceiveWorkbookEvents(m_log);
    m_model.Application->Raise(Activate, {ObjectVariant(m_book)});
    EXPECT_EQ(m_log.Events, "activate Book1;");
    m_model.Application->Events = IID_NULL;
    EXPECT_NE(ErrorOf([&] { (void)Excel()->ReceiveWorkbookEvents(m_log); }), "none");
}

TEST_F(WorkbookEventsTest, TellWhetherAWorkbookIsTheSame) {
    auto& active = m_model.Application->Properties[L"ActiveWorkbook"];
    active = _variant_t(static_cast<IDispatch*>(nullptr));
    EXPECT_FALSE(Excel()->ActiveWorkbook());
    active = ObjectVariant(m_book);
    const auto first = Excel()->ActiveWorkbook();
    EXPECT_TRUE(first->IsSame(*Excel()->ActiveWorkbook()));
    active = ObjectVariant(NewScripted({{L"Name", L"Book1"}}));
    EXPECT_TRUE(first->IsSame(*Excel()->ActiveWorkbook()));
    active = ObjectVariant(NewScripted({{L"Name", L"Book2"}}));
    EXPECT_FALSE(first->IsSame(*Excel()->ActiveWorkbook()));
}

}  // namespace
}  // namespace krv::tests
