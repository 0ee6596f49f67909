// formpreview: shows one of the dialogs in its real window without a host application, to look at
// it. Usage: formpreview frmCallback|FrmAbout|frmDataTransfer [spreadsheet]
#include <windows.h>

#include <cstdio>
#include <string>

#include "about/AboutDialogs.h"
#include "common/files/StandardFiles.h"
#include "common/progress/frmCallback.h"
#include "ports/suite/SuiteComponents.h"
#include "waveform/dialog/frmDataTransfer.h"
#include "windows/desktop/WindowsClipboard.h"
#include "windows/desktop/WindowsClock.h"
#include "windows/desktop/WindowsFileDialogs.h"
#include "windows/desktop/WindowsMessageBoxes.h"
#include "windows/forms/WindowsScreen.h"
#include "windows/suite/RegisteredComponents.h"

namespace {

// Work that only moves the two bars until the user cancels.
class EndlessWork final : public krv::progress::CallbackWork {
 public:
    explicit EndlessWork(krv::progress::frmCallback& dialog) : m_dialog(dialog) {}
    void RunDownload() override {
        constexpr std::int32_t End = 1000;
        m_dialog.SetWaitMessage(1, "Overall progress...");
        m_dialog.SetProgressBar(1, 0, End, 0);
        m_dialog.LinkProgressBars(2, 0, End);
        for (std::int32_t value = 0; !m_dialog.TestCancelFlag(); value = (value + 1) % End) {
            m_dialog.SetWaitMessage(2, "Reading I-File... (" + std::to_string(value) + " points)");
            m_dialog.SetProgressBar(2, 0, std::int32_t{End}, std::int32_t{value});
            Sleep(20);
        }
    }

 private:
    krv::progress::frmCallback& m_dialog;
};

int ShowProgress(krv::windows::WindowsScreen& screen) {
    krv::progress::frmCallback dialog(screen, screen);
    EndlessWork work(dialog);
    dialog.SetCallbackID(1);
    dialog.CallbackOwner = &work;
    dialog.ShowModal();
    return 0;
}

int ShowDownload(krv::windows::WindowsScreen& screen, bool spreadsheet) {
    krv::windows::WindowsMessageBoxes messageBoxes(screen);
    krv::windows::WindowsFileDialogs fileDialogs(screen);
    krv::windows::WindowsClock clock;
    krv::files::StandardFiles files;
    krv::waveform::frmDataTransfer dialog(
        krv::ports::Desktop{screen, messageBoxes, fileDialogs, screen, clock, files, {}});
    dialog.Load();
    if (spreadsheet) {
        dialog.optSpreadsheet.Value = true;
    }
    dialog.ShowModal();
    return 0;
}

// The components are those of this computer.
int ShowAbout(krv::windows::WindowsScreen& screen) {
    krv::windows::WindowsMessageBoxes messageBoxes(screen);
    krv::windows::WindowsClipboard clipboard;
    krv::windows::RegisteredComponents components("CvnKRVControl.KRVControl");
    krv::about::AboutDialogs dialogs({screen, messageBoxes, clipboard, components});
    dialogs.ShowAbout({krv::ports::ComponentProgIds.begin(), krv::ports::ComponentProgIds.end()});
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    krv::windows::WindowsScreen screen;
    const std::string form = argc > 1 ? argv[1] : "";
    if (form == "frmCallback") {
        return ShowProgress(screen);
    }
    if (form == "frmDataTransfer") {
        return ShowDownload(screen, argc > 2);
    }
    if (form == "FrmAbout") {
        return ShowAbout(screen);
    }
    std::fputs("usage: formpreview frmCallback|FrmAbout|frmDataTransfer [spreadsheet]\n", stderr);
    return 2;
}
