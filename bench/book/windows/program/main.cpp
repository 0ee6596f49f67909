// krvbook: a small workbook window with the TQL/KRV toolbar control where no office suite is
// installed.
#include "bench/book/windows/BookApplicationObject.h"
#include "bench/book/windows/BookWindow.h"
#include "bench/shared/windows/OfficeProgram.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    using namespace krv::bench;
    return RunOfficeProgram<BookApplication, BookWindow, BookApplicationObject>("krvbook");
}
