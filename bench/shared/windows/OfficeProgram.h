// OfficeProgram: one of the bench's programs from its start to its end: the application, its window
// with the toolbar control, and its automation objects.
#pragma once

#include <optional>

#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/OfficeObjects.h"
#include "bench/shared/windows/ProgramStart.h"

namespace krv::bench {

// ApplicationObject has AddInName, the class that it stands in for, and the automation objects of
// its documents.
template <class Application, class Window, class ApplicationObject>
class OfficeProgram {
 public:
    explicit OfficeProgram(const ProgramOptions& options)
        : m_window(m_application), m_objects(m_application, m_window) {
        m_application.AddIns().push_back({ApplicationObject::AddInName, ProgramFolder()});
        m_window.PrepareControl(m_objects.Automation());
        m_window.OpenFiles(options.files, options.screenshotReady);
        if (options.registerAsActive) {
            m_registration.emplace(m_objects.Application(), ApplicationObject::ClassName,
                                   ApplicationObject::ClassId);
        }
        m_window.StartControl();
        m_window.Present(options.screenshotReady);
    }
    OfficeProgram(const OfficeProgram&) = delete;
    OfficeProgram& operator=(const OfficeProgram&) = delete;
    // The control goes while the application still answers it.
    ~OfficeProgram() {
        m_window.ReleaseControl();
        m_registration.reset();
        CoDisconnectObject(m_objects.Application(), 0);
    }

    void Run() { m_window.Run(); }

 private:
    Application m_application;
    Window m_window;
    OfficeObjects<ApplicationObject> m_objects;
    std::optional<ActiveRegistration> m_registration;
};

// The program's main function.
template <class Application, class Window, class ApplicationObject>
int RunOfficeProgram(const char* name) {
    return StartProgram(name, ApplicationObject::ClassName, [](const ProgramOptions& options) {
        OfficeProgram<Application, Window, ApplicationObject> program(options);
        program.Run();
    });
}

}  // namespace krv::bench
