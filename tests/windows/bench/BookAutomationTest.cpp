// krvbook's automation objects, called as add-ins and macros call them.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <map>

#include "bench/book/windows/BookApplicationObject.h"
#include "bench/shared/windows/OfficeObjects.h"
#include "common/AsKind.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/windows/support/AutomationTest.h"
#include "tests/windows/support/PictureFiles.h"
#include "tests/windows/support/TestedLibrary.h"
#include "tests/windows/support/WindowDouble.h"
#include "windows/automation/EventSubscription.h"
#include "windows/automation/LateBound.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/WideText.h"
#include "windows/office/ApplicationObjects.h"

namespace krv::tests {
namespace {

using namespace bench;

using windows::LateBound;
using windows::ToVariant;

// A running application without a window, and what a caller does to it.
class BookAutomationTest : public AutomationTest {
 protected:
    [[nodiscard]] std::shared_ptr<Workbook> AddBook() {
        m_model.Add();
        return m_model.ActiveBook();
    }
    [[nodiscard]] LateBound Range(const char* text) const {
        return m_application.CallObject(L"Range", {ToVariant(std::string(text))});
    }
    [[nodiscard]] LateBound Bar() const {
        return m_application.CallObject(L"CommandBars", {ToVariant(std::string(GeneratorBarName))});
    }
    [[nodiscard]] static LateBound Item(const LateBound& of, const wchar_t* member,
                                        const Value& key) {
        return of.CallObject(member, {ToVariant(key)});
    }

    BookApplication m_model;
    WindowDouble m_window;
    OfficeObjects<BookApplicationObject> m_objects{m_model, m_window};
    LateBound m_application{m_objects.Application()};
};

TEST_F(BookAutomationTest, TellsRangesAsSpreadsheetsDo) {
    EXPECT_EQ(ErrorOf([&] { (void)Range("A1"); }).substr(0, 20), "1004 \"Range\" failed,");
    m_model.Add();
    const LateBound range = Range("B2:C4,E5");
    EXPECT_EQ(range.GetText(L"Address"), "$B$2:$C$4,$E$5");
    EXPECT_EQ(range.GetObject(L"Areas").GetLong(L"Count"), 2);
    EXPECT_EQ(range.GetObject(L"Rows").GetLong(L"Count"), 3);
    EXPECT_EQ(range.GetObject(L"Columns").GetLong(L"Count"), 2);
    EXPECT_EQ(range.GetLong(L"Count"), 7);
    EXPECT_EQ(Item(range, L"Areas", 2).GetText(L"Address"), "$E$5");
    EXPECT_EQ(range.CallObject(L"Cells", {ToVariant(2), ToVariant(2)})
                  .CallObject(L"Resize", {ToVariant(2), ToVariant(3)})
                  .GetText(L"Address"),
              "$C$3:$E$4");
    EXPECT_EQ(ErrorOf([&] { (void)m_application.Call(L"Range"); }),
              "449 Argument not optional (krvbook)");
    EXPECT_EQ(ErrorOf([&] { (void)Range("A:XFD").Get(L"Count"); }), "6 Overflow (krvbook)");
}

TEST_F(BookAutomationTest, ServesTheProductsOwnAdapter) {
    const auto book = AddBook();
    book->ChangeCells([](Sheet& sheet) {
        for (std::int32_t row = 0; row < SheetLimit::Rows; ++row) {
            sheet.ColumnToFill(1).SetNumber(row, row * 0.5);
        }
    });
    const auto excel = AsKind<ports::ExcelHost>(windows::HostOf(m_objects.Application()));
    const auto column = excel->ResolveRange("B:B");
    EXPECT_EQ(column->Sheet(), (ports::SheetName{book->Name(), book->SheetName()}));
    std::vector<Value> values(static_cast<std::size_t>(column->CellCount()));
    const auto start = std::chrono::steady_clock::now();
    column->ReadValues(0, values);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(values.back(), Value((SheetLimit::Rows - 1) * 0.5));
    EXPECT_LT(taken.count(), 5);
    RecordProperty("SecondsForAMillionCells", std::to_string(taken.count()));

    book->ChangeSelection([](Selection& selection) { selection.Select({{2, 2, 7, 1}}); });
    EXPECT_EQ(excel->Selection()->Address(), "$C$3:$C$9");
    EXPECT_EQ(m_application.GetObject(L"ActiveCell").GetText(L"Address"), "$C$3");
    EXPECT_TRUE(excel->IsStatusBarDisplayed());
    excel->SetStatusBarText("Reading I-File...");
    EXPECT_EQ(m_model.StatusText(), "Reading I-File...");
    excel->SetStatusBarText("");
    EXPECT_EQ(m_model.StatusText(), "Ready");
    excel->SetBusyCursor(true);
    EXPECT_EQ(m_model.Cursor(), 2);
    EXPECT_EQ(excel->ActiveWorkbook()->Name(), "Book1");
    EXPECT_EQ(excel->ActiveWorkbook()->Application()->ActiveWorkbook()->Name(), "Book1");

    // The loaded add-in stands in for the suite's, where help is looked for.
    const TestedLibrary& addIn = TestedLibrary::AddIn();
    EXPECT_EQ(excel->AddIns().back()->Name(), "KRV.XLA");
    EXPECT_EQ(windows::ToWide(excel->AddIns().back()->Path() + "\\KRVAddIn.dll"), addIn.Path());
    m_model.AddIns().push_back({"krv.xla", "C:\\Suite"});
    EXPECT_EQ(excel->AddIns().back()->Name(), "KRVAddIn.dll");
}

TEST_F(BookAutomationTest, PutsPicturesOnTheSheet) {
    auto book = AddBook();
    TemporaryFolder folder;
    std::ofstream(folder.Path() / "a.wmf", std::ios::binary) << PlaceableMetafile();
    const _variant_t file = ToVariant((folder.Path() / "a.wmf").string());
    const _variant_t no = ToVariant(false);
    const _variant_t yes = ToVariant(true);
    const LateBound shapes = m_application.GetObject(L"ActiveSheet").GetObject(L"Shapes");
    const LateBound cell = Range("C2");
    const auto add = [&](const _variant_t& link, double width) {
        return shapes.CallObject(
            L"AddPicture", {file, link, yes, cell.Get(L"Left"), cell.Get(L"Top"), ToVariant(width),
                            ToVariant(60.0)});
    };
    const LateBound shape = add(no, 100);
    const auto size = [&] { return book->Pictures()[0].size; };
    EXPECT_EQ(book->Pictures()[0].left, 2 * CellSize::ColumnWidth);
    EXPECT_EQ(book->Pictures()[0].top, CellSize::RowHeight);
    EXPECT_EQ(size().width, 100);
    // By what it is, and by what it was.
    shape.Call(L"ScaleHeight", {ToVariant(2.0), no});
    EXPECT_EQ(size().height, 120);
    shape.Call(L"ScaleHeight", {ToVariant(1.0), yes});
    EXPECT_EQ(size().height, 240);
    EXPECT_EQ(size().width, 100);
    shape.Call(L"ScaleWidth", {ToVariant(0.5), yes});
    EXPECT_EQ(size().width, 240);
    EXPECT_EQ(ErrorOf([&] {
                  shape.Call(L"ScaleWidth", {ToVariant(0.0), yes});
              }).substr(0, 5),
              "1004 ");
    (void)add(no, -1);
    EXPECT_EQ(book->Pictures()[1].size.width, 480) << "its own width";
    EXPECT_EQ(ErrorOf([&] { (void)add(yes, 100); }),
              "1004 Linked pictures are not supported. (krvbook)");
    std::ofstream(folder.Path() / "a.wmf", std::ios::binary) << "text";
    EXPECT_EQ(ErrorOf([&] { (void)add(no, 100); }).substr(0, 5), "1004 ");
    EXPECT_EQ(windows::ToValue(m_application.Call(L"InchesToPoints", {ToVariant(2.5)})),
              Value(180.0));
    m_model.Close(book);
    book.reset();
    EXPECT_EQ(ErrorOf([&] { shapes.Call(L"AddPicture"); }),
              "424 The workbook has been closed. (krvbook)");
}

TEST_F(BookAutomationTest, TellsReceiversWhatHappensToWorkbooks) {
    const auto first = m_model.Add();
    const LateBound firstObject = m_application.GetObject(L"ActiveWorkbook");
    std::string events;
    bool isCancelling = false;
    const auto subscription = windows::SubscribeToEvents(
        m_objects.Application(), windows::ExcelEventsId,
        [&](DISPID event, const DISPPARAMS& arguments) {
            using namespace windows;
            const std::map<DISPID, const char*> names{
                {ExcelEvent::NewWorkbook, "New"},          {ExcelEvent::WorkbookActivate, "+"},
                {ExcelEvent::WorkbookDeactivate, "-"},     {ExcelEvent::WindowActivate, "(+"},
                {ExcelEvent::WindowDeactivate, "(-"},      {ExcelEvent::WorkbookBeforeSave, "Save"},
                {ExcelEvent::WorkbookBeforeClose, "Close"}};
            const LateBound book(*EventArgument(arguments, 0));
            events += names.at(event) + book.GetText(L"Name") +
                      (book.Object() == firstObject.Object() ? "! " : " ");
            const VARIANT* const last = EventArgument(arguments, arguments.cArgs - 1);
            if (isCancelling && V_VT(last) == (VT_BOOL | VT_BYREF)) {
                *V_BOOLREF(last) = VARIANT_TRUE;
            }
        });
    m_model.Add();
    EXPECT_EQ(std::exchange(events, {}), "NewBook2 (-Book1! -Book1! +Book2 (+Book2 ");
    m_model.Activate(first);
    EXPECT_EQ(std::exchange(events, {}), "(-Book2 -Book2 +Book1! (+Book1! ");
    isCancelling = true;
    EXPECT_TRUE(m_model.IsKeptOpen(first));
    EXPECT_EQ(ErrorOf([&] { m_model.SaveAs(*first, "nowhere.krvbook"); }),
              "1001 The saving was cancelled.");
    EXPECT_EQ(std::exchange(events, {}), "CloseBook1! SaveBook1! ");
    m_model.Close(first);
    EXPECT_EQ(events, "(-Book1! -Book1! +Book2 (+Book2 ");
}

TEST_F(BookAutomationTest, RefusesCallsWhileACellIsEditedAndAfterItsEnd) {
    m_model.Add();
    const LateBound range = Range("A1");
    m_window.isEditing = true;
    EXPECT_EQ(ErrorOf([&] { (void)range.Get(L"Value"); }).substr(0, 29),
              "50290 The application is busy");
    m_window.isEditing = false;
    m_application.Call(L"Quit");
    EXPECT_TRUE(m_window.hasQuit);
    EXPECT_EQ(m_application.GetText(L"Name"), "krvbook");
    EXPECT_FALSE(m_application.Has(L"Run"));
    m_objects.End();
    EXPECT_EQ(ErrorOf([&] { (void)Range("A1"); }), "424 The application has ended. (krvbook)");
    EXPECT_EQ(m_application.Get(L"Application"), _variant_t(static_cast<IDispatch*>(nullptr)));
}

}  // namespace
}  // namespace krv::tests
