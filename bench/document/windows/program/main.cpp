// krvdoc: a small document window with the TQL/KRV toolbar control where no office suite is
// installed.
#include "bench/document/windows/DocumentApplicationObject.h"
#include "bench/document/windows/DocumentWindow.h"
#include "bench/shared/windows/OfficeProgram.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    using namespace krv::bench;
    return RunOfficeProgram<DocumentApplication, DocumentWindow, DocumentApplicationObject>(
        "krvdoc");
}
