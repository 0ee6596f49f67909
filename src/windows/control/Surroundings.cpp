#include "windows/control/Surroundings.h"

#include "windows/desktop/UserNumberFormat.h"
#include "windows/forms/Pictures.h"

namespace krv::windows {
namespace {

thread_local Surroundings* ofThisThread = nullptr;

}  // namespace

Surroundings::Surroundings()
    : m_screen(DrawPicture, &m_foreignControls),
      m_messageBoxes(m_screen),
      m_fileDialogs(m_screen),
      m_pictures(
          {m_screen, m_messageBoxes, m_fileDialogs, m_screen, m_resolution, m_process, m_removal}),
      m_adapters({m_suite, m_help, m_pictures}) {}

Surroundings::~Surroundings() {
    ofThisThread = nullptr;
}

std::shared_ptr<Surroundings> Surroundings::OfThisThread() {
    if (ofThisThread != nullptr) {
        return ofThisThread->shared_from_this();
    }
    auto made = std::make_shared<Surroundings>();
    ofThisThread = made.get();
    return made;
}

control::ControlServices Surroundings::ServicesFor(ports::ControlSurface& surface) {
    return {
        {m_screen, m_messageBoxes, m_fileDialogs, m_screen, m_clock, m_files, UserNumberFormat()},
        surface,
        m_suite,
        m_adapters,
        m_about,
        &m_applications};
}

}  // namespace krv::windows
