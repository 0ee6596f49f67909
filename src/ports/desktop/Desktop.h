// What a dialog and its work need of the platform, handed over together.
#pragma once

#include "common/Numbers.h"
#include "ports/desktop/Clock.h"
#include "ports/desktop/EventPump.h"
#include "ports/desktop/FileDialogs.h"
#include "ports/desktop/FileSystem.h"
#include "ports/desktop/FormScreen.h"
#include "ports/desktop/MessageBoxes.h"

namespace krv::ports {

// References to services that outlive every form.
struct Desktop {
    FormScreen& screen;
    MessageBoxes& messageBoxes;
    FileDialogs& fileDialogs;
    EventPump& eventPump;
    Clock& clock;
    FileSystem& files;
    NumberFormat numberFormat;
};

}  // namespace krv::ports
