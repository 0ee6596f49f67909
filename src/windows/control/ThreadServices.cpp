#include "windows/control/ThreadServices.h"

#include "windows/base/UserNumberFormat.h"
#include "windows/preview/PreviewWindow.h"

namespace krv::windows {
namespace {

thread_local ThreadServices* ofThisThread = nullptr;

}  // namespace

ThreadServices::ThreadServices()
    : m_screen(&m_foreignControls),
      m_messageBoxes(m_screen),
      m_fileDialogs(m_screen),
      m_pictures(
          {m_screen, m_messageBoxes, m_fileDialogs, m_screen, m_resolution, m_process, m_removal}),
      m_adapters({m_suite, m_help, m_pictures}) {}

ThreadServices::~ThreadServices() {
    ofThisThread = nullptr;
}

std::shared_ptr<ThreadServices> ThreadServices::OfThisThread() {
    if (ofThisThread != nullptr) {
        return ofThisThread->shared_from_this();
    }
    auto made = std::make_shared<ThreadServices>();
    ofThisThread = made.get();
    return made;
}

control::ControlServices ThreadServices::ServicesFor(ports::ControlSurface& surface) {
    return {
        {m_screen, m_messageBoxes, m_fileDialogs, m_screen, m_clock, m_files, UserNumberFormat()},
        surface,
        m_suite,
        m_adapters,
        m_about,
        &m_applications,
        [] { return std::make_unique<PreviewWindow>(); }};
}

}  // namespace krv::windows
