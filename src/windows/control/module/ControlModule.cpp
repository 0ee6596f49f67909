// What KRVControl.dll is made of.
#include <windows.h>
// After windows.h, which it needs.
#include <KRVControl.h>
#include <olectl.h>

#include <array>

#include "ports/suite/ProgIds.h"
#include "windows/com/ComModule.h"
#include "windows/control/ToolbarControl.h"

namespace krv::windows {
namespace {

IUnknown* NewControl();

constexpr DWORD ControlStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                OLEMISC_SETCLIENTSITEFIRST;

const std::array Classes{ComClass{__uuidof(::KRVControl), ports::ProgId::KRVControl,
                                  L"TQL/KRV Toolbar Control", NewControl, ControlStatus}};

IUnknown* NewControl() {
    return static_cast<IToolbarSupport*>(MakeCom<ToolbarControl>(Classes.front()).Detach());
}

}  // namespace

const ComModule& ThisComModule() {
    static const ComModule module{"KRVControl", Classes};
    return module;
}

}  // namespace krv::windows
