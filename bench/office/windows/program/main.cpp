// krvbook: a small workbook window that hosts the TQL/KRV toolbar control where no office suite is
// installed.
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "bench/office/windows/ActiveRegistration.h"
#include "bench/office/windows/ApplicationObject.h"
#include "bench/office/windows/BookWindow.h"
#include "common/Error.h"
#include "windows/text/WideText.h"

namespace krv::bench {
namespace {

constexpr int WrongUsage = 2;
constexpr const char* Usage =
    "usage: krvbook [FILE.csv]... [--screenshot-ready] [--register-as-active]\n"
    "\n"
    "  --screenshot-ready    places the window at the top left of the screen, and writes the line\n"
    "                        \"krvbook is ready\" to standard output when all of it is drawn\n"
    "  --register-as-active  for tests: registers as the running Excel.Application where that "
    "class\n"
    "                        was pointed at krvbook\n";

struct Options {
    std::vector<std::string> files;
    bool screenshotReady = false;
    bool registerAsActive = false;
    bool isWrong = false;
};

Options ReadCommandLine() {
    Options options;
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int index = 1; index < count; ++index) {
        const std::string argument = windows::ToUtf8(arguments[index]);
        if (argument == "--screenshot-ready") {
            options.screenshotReady = true;
        } else if (argument == "--register-as-active") {
            options.registerAsActive = true;
        } else if (argument.rfind("--", 0) == 0) {
            options.isWrong = true;
        } else {
            std::vector<wchar_t> path(32768);
            const DWORD length = GetFullPathNameW(arguments[index], static_cast<DWORD>(path.size()),
                                                  path.data(), nullptr);
            options.files.push_back(windows::ToUtf8({path.data(), length}));
        }
    }
    LocalFree(arguments);
    return options;
}

// The folder where the add-in would lie: the help file is looked for there.
std::string ProgramFolder() {
    std::vector<wchar_t> path(32768);
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::string full = windows::ToUtf8({path.data(), length});
    return full.substr(0, full.find_last_of('\\'));
}

class Program {
 public:
    explicit Program(const Options& options)
        : m_window(m_application),
          m_automation(std::make_shared<BookAutomation>(m_application, m_window)),
          m_object(windows::MakeCom<ApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(m_object.Get());
        m_application.AddIns().push_back({"KRV.XLA", ProgramFolder()});
        OpenFiles(options);
        if (options.registerAsActive) {
            m_registration = std::make_unique<ActiveRegistration>(AsDispatch());
        }
        m_window.Band().HostControl(AsDispatch(),
                                    m_automation->ObjectOf(m_application.ActiveBook()).Get());
        Show(options.screenshotReady);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    // The control goes while the application still answers it.
    ~Program() {
        m_window.Band().ReleaseControl();
        m_registration.reset();
        CoDisconnectObject(AsDispatch(), 0);
        m_object->End();
        m_automation->End();
    }

    void Run() { m_window.Run(); }

 private:
    [[nodiscard]] IDispatch* AsDispatch() const { return m_object.Get(); }

    void OpenFiles(const Options& options) {
        for (const std::string& file : options.files) {
            if (!options.screenshotReady) {
                m_window.Open(file);
                continue;
            }
            // Nobody may be there to close a message box.
            try {
                m_application.Open(file);
            } catch (const Error& error) {
                std::fprintf(stderr, "krvbook: %s\n", error.Description().c_str());
                m_application.SetStatus(error.Description());
            }
        }
        if (!m_application.ActiveBook()) {
            m_application.Add();
        }
    }

    void Show(bool screenshotReady) {
        if (!screenshotReady) {
            m_window.Show(true);
            return;
        }
        SetWindowPos(m_window.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE);
        m_window.Show(true);
        m_window.Paint();
        std::puts("krvbook is ready");
        std::fflush(stdout);
    }

    BookApplication m_application;
    BookWindow m_window;
    std::shared_ptr<BookAutomation> m_automation;
    Microsoft::WRL::ComPtr<ApplicationObject> m_object;
    std::unique_ptr<ActiveRegistration> m_registration;
};

int RunProgram(const Options& options) {
    try {
        Program program(options);
        program.Run();
        return 0;
    } catch (const Error& error) {
        std::fprintf(stderr, "krvbook: %s\n", error.Description().c_str());
        return 1;
    }
}

}  // namespace
}  // namespace krv::bench

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    const krv::bench::Options options = krv::bench::ReadCommandLine();
    if (options.isWrong) {
        std::fputs(krv::bench::Usage, stderr);
        return krv::bench::WrongUsage;
    }
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    if (FAILED(OleInitialize(nullptr))) {
        return 1;
    }
    const int result = krv::bench::RunProgram(options);
    OleUninitialize();
    return result;
}
