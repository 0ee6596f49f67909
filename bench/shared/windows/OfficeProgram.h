// OfficeProgram: one of the bench's programs from its start to its end: the application, its window
// its automation objects, and the COM add-ins that the registry has for it.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ComAddIns.h"
#include "bench/shared/windows/OfficeObjects.h"
#include "bench/shared/windows/ProgramStart.h"

namespace krv::bench {

// ApplicationObject has the class that it stands in for, and the automation objects of its
// documents.
template <class Application, class Window, class ApplicationObject>
class OfficeProgram {
 public:
    explicit OfficeProgram(const ProgramOptions& options)
        : m_window(m_application),
          m_objects(m_application, m_window),
          m_addIns(m_objects.Automation(), [this](const std::string& problem) { Note(problem); }) {
        m_addIns.ConnectAtStartup();
        m_window.ShowRibbon(m_objects.Automation());
        m_window.OpenFiles(options.files, options.screenshotReady);
        if (options.registerAsActive) {
            m_registration.emplace(m_objects.Application(), ApplicationObject::ClassName,
                                   ApplicationObject::ClassId);
        }
        m_window.Present(options.screenshotReady);
        m_addIns.TellStartupComplete();
    }
    OfficeProgram(const OfficeProgram&) = delete;
    OfficeProgram& operator=(const OfficeProgram&) = delete;
    // Add-ins go while the application still answers them.
    ~OfficeProgram() {
        m_window.ReleaseRibbon();
        m_addIns.ShutDown();
        m_registration.reset();
        CoDisconnectObject(m_objects.Application(), 0);
    }

    void Run() { m_window.Run(); }

 private:
    void Note(const std::string& problem) {
        std::fprintf(stderr, "%s: %s\n", m_application.Traits().program, problem.c_str());
    }

    Application m_application;
    Window m_window;
    OfficeObjects<ApplicationObject> m_objects;
    ComAddIns m_addIns;
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
