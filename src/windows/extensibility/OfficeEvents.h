// The events of Excel, of Word and of command bar buttons: the interfaces that they come through,
// and their numbers.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <oaidl.h>

namespace krv::windows {

inline constexpr IID ExcelApplicationId{
    0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID ExcelEventsId{
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID WordApplicationId{
    0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID WordEventsId{
    0x00020A01, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID ButtonEventsId{
    0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

// Each with the workbook first; those of windows have the window second.
namespace ExcelEvent {
inline constexpr DISPID WindowActivate = 1556;
inline constexpr DISPID WindowDeactivate = 1557;
inline constexpr DISPID NewWorkbook = 1565;
inline constexpr DISPID WorkbookOpen = 1567;
inline constexpr DISPID WorkbookActivate = 1568;
inline constexpr DISPID WorkbookDeactivate = 1569;
// Workbook, Cancel by reference.
inline constexpr DISPID WorkbookBeforeClose = 1570;
// Workbook, SaveAsUI, Cancel by reference.
inline constexpr DISPID WorkbookBeforeSave = 1571;
}  // namespace ExcelEvent

// With the document first, but for those that say otherwise.
namespace WordEvent {
// No arguments.
inline constexpr DISPID Quit = 2;
// No arguments.
inline constexpr DISPID DocumentChange = 3;
inline constexpr DISPID DocumentOpen = 4;
// Document, Cancel by reference.
inline constexpr DISPID DocumentBeforeClose = 6;
// Document, SaveAsUI and Cancel by reference.
inline constexpr DISPID DocumentBeforeSave = 8;
inline constexpr DISPID NewDocument = 9;
inline constexpr DISPID WindowActivate = 10;
inline constexpr DISPID WindowDeactivate = 11;
}  // namespace WordEvent

namespace ButtonEvent {
// The button, CancelDefault by reference.
inline constexpr DISPID Click = 1;
}  // namespace ButtonEvent

}  // namespace krv::windows
