// krvdoc: a small document window that hosts the TQL/KRV toolbar control where no office suite is
// installed.
#include <windows.h>

#include <cstdio>
#include <memory>
#include <string>

#include "bench/document/windows/DocumentApplicationObject.h"
#include "bench/document/windows/DocumentControl.h"
#include "bench/document/windows/DocumentWindow.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ProgramStart.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr const char* Usage =
    "usage: krvdoc [FILE.krvdoc] [--screenshot-ready] [--register-as-active]\n"
    "\n"
    "  --screenshot-ready    places the window at the top left of the screen, and writes the line\n"
    "                        \"krvdoc is ready\" to standard output when all of it is drawn\n"
    "  --register-as-active  for tests: registers as the running Word.Application where that "
    "class\n"
    "                        was pointed at krvdoc\n";

class Program {
 public:
    explicit Program(const ProgramOptions& options)
        : m_application(m_meter),
          m_window(m_application),
          m_automation(std::make_shared<DocumentAutomation>(m_application, m_window)),
          m_control(m_application, *m_automation, m_window.Band()),
          m_object(windows::MakeCom<DocumentApplicationObject>(m_automation)) {
        m_automation->SetApplicationObject(AsDispatch());
        m_application.AddIns().push_back({"KRV.DOT", ProgramFolder()});
        OpenFiles(options);
        if (options.registerAsActive) {
            m_registration = std::make_unique<ActiveRegistration>(AsDispatch(), DocumentClassName,
                                                                  KrvDocClassId);
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
        m_automation->End();
    }

    void Run() { m_window.Run(); }

 private:
    [[nodiscard]] IDispatch* AsDispatch() const { return m_object.Get(); }

    // There is one document: of several files the last stays open.
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
                std::fprintf(stderr, "krvdoc: %s\n", error.Description().c_str());
                m_application.SetStatus(error.Description());
            }
        }
        if (!m_application.OpenDocument()) {
            m_application.Add();
        }
    }

    ShownPictureMeter m_meter;
    DocumentApplication m_application;
    DocumentWindow m_window;
    std::shared_ptr<DocumentAutomation> m_automation;
    DocumentControl m_control;
    Microsoft::WRL::ComPtr<DocumentApplicationObject> m_object;
    std::unique_ptr<ActiveRegistration> m_registration;
};

}  // namespace
}  // namespace krv::bench

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    using namespace krv::bench;
    return StartProgram("krvdoc", Usage, [](const ProgramOptions& options) {
        Program program(options);
        program.Run();
    });
}
