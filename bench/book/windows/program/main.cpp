// krvbook: a small workbook window that hosts the TQL/KRV toolbar control where no office suite is
// installed.
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

#include "bench/book/windows/ApplicationObject.h"
#include "bench/book/windows/BookControl.h"
#include "bench/book/windows/BookWindow.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ProgramStart.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr const char* Usage =
    "usage: krvbook [FILE]... [--screenshot-ready] [--register-as-active]\n"
    "\n"
    "  FILE                  a workbook (*.krvbook) or comma separated values (*.csv)\n"
    "  --screenshot-ready    places the window at the top left of the screen, and writes the line\n"
    "                        \"krvbook is ready\" to standard output when all of it is drawn\n"
    "  --register-as-active  for tests: registers as the running Excel.Application where that "
    "class\n"
    "                        was pointed at krvbook\n";

class Program {
 public:
    explicit Program(const ProgramOptions& options)
        : m_window(m_application),
          m_automation(std::make_shared<BookAutomation>(m_application, m_window)),
          m_control(m_application, *m_automation, m_window.Band()),
          m_object(windows::MakeCom<ApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(m_object.Get());
        m_window.FollowControl(m_control);
        m_application.AddIns().push_back({"KRV.XLA", ProgramFolder()});
        OpenFiles(options);
        if (options.registerAsActive) {
            m_registration =
                std::make_unique<ActiveRegistration>(AsDispatch(), BookClassName, KrvBookClassId);
        }
        m_control.Start();
        m_window.Present(options.screenshotReady);
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

    void OpenFiles(const ProgramOptions& options) {
        for (const std::string& file : options.files) {
            if (!options.screenshotReady) {
                m_window.Open(file);
                continue;
            }
            // There may be no one to close a message box.
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

    BookApplication m_application;
    BookWindow m_window;
    std::shared_ptr<BookAutomation> m_automation;
    BookControl m_control;
    Microsoft::WRL::ComPtr<ApplicationObject> m_object;
    std::unique_ptr<ActiveRegistration> m_registration;
};

}  // namespace
}  // namespace krv::bench

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    using namespace krv::bench;
    return StartProgram("krvbook", Usage, [](const ProgramOptions& options) {
        Program program(options);
        program.Run();
    });
}
