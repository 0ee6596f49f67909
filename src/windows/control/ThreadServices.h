// ThreadServices: what all toolbar controls of one thread share: the screen with its forms, message
// boxes and file dialogs, and the ways to the application and to the suite.
//
// Made for the first control of a thread, gone with the last.
#pragma once

#include <memory>

#include "about/AboutDialogs.h"
#include "common/files/StandardFiles.h"
#include "control/ControlServices.h"
#include "hosts/HostAdapters.h"
#include "image/ScreenImageTransfer.h"
#include "ports/suite/ProgIds.h"
#include "windows/control/SystemContainer.h"
#include "windows/desktop/WindowsClipboard.h"
#include "windows/desktop/WindowsClock.h"
#include "windows/desktop/WindowsFileDialogs.h"
#include "windows/desktop/WindowsFileRemoval.h"
#include "windows/desktop/WindowsHelpViewer.h"
#include "windows/desktop/WindowsMessageBoxes.h"
#include "windows/desktop/WindowsProcess.h"
#include "windows/desktop/WindowsScreenResolution.h"
#include "windows/forms/WindowsScreen.h"
#include "windows/office/ApplicationObjects.h"
#include "windows/suite/AutomationSuite.h"
#include "windows/suite/RegisteredComponents.h"

namespace krv::windows {

class ThreadServices : public std::enable_shared_from_this<ThreadServices> {
 public:
    ThreadServices();
    ThreadServices(const ThreadServices&) = delete;
    ThreadServices& operator=(const ThreadServices&) = delete;
    ~ThreadServices();

    [[nodiscard]] static std::shared_ptr<ThreadServices> OfThisThread();

    // References to what lives here, and to the surface.
    [[nodiscard]] control::ControlServices ServicesFor(ports::ControlSurface& surface);

 private:
    SystemContainer m_foreignControls;
    WindowsScreen m_screen;
    WindowsMessageBoxes m_messageBoxes;
    WindowsFileDialogs m_fileDialogs;
    WindowsClock m_clock;
    files::StandardFiles m_files;
    WindowsHelpViewer m_help;
    AutomationSuite m_suite;
    AutomationApplications m_applications;
    WindowsScreenResolution m_resolution;
    WindowsProcess m_process;
    WindowsFileRemoval m_removal;
    image::ScreenImageTransfer m_pictures;
    hosts::HostAdapters m_adapters;
    WindowsClipboard m_clipboard;
    RegisteredComponents m_components{ports::ProgId::KRVControl};
    about::AboutDialogs m_about{{m_screen, m_messageBoxes, m_clipboard, m_components}};
};

}  // namespace krv::windows
