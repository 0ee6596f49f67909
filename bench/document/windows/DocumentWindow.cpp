#include "bench/document/windows/DocumentWindow.h"

namespace krv::bench {

constexpr MainWindow::Look DocumentWindow::DocumentLook{
    L"KrvDoc",
    L"krvdoc",
    L"krvdoc is a small document window for trying the TQL/KRV toolbar control on a computer "
    L"without an office suite.\r\n\r\nIt keeps text and pictures and answers automation calls as a "
    L"word processor does, as far as the control needs them.  It is a test bench and no word "
    L"processor.",
    L"Documents (*.krvdoc)\0*.krvdoc\0All files\0*.*\0",
    L"krvdoc",
    1000,
    760};

}  // namespace krv::bench
