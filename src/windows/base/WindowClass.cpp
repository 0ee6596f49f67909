#include "windows/base/WindowClass.h"

#include "windows/base/Module.h"

namespace krv::windows {

HWND CreateWindowOf(const WindowKind& kind, WNDPROC procedure, const WindowSetup& setup) {
    WNDCLASSEXW definition{};
    definition.cbSize = sizeof definition;
    definition.style = kind.style;
    definition.lpfnWndProc = procedure;
    definition.hInstance = ThisModule();
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground =
        kind.background == WindowKind::NoBackground ? nullptr : GetSysColorBrush(kind.background);
    definition.lpszClassName = kind.name;
    // Fails harmlessly from the second window of the kind on.
    RegisterClassExW(&definition);
    return CreateWindowExW(setup.extendedStyle, kind.name, setup.title, setup.style, setup.left,
                           setup.top, setup.width, setup.height, setup.parent, nullptr,
                           ThisModule(), nullptr);
}

}  // namespace krv::windows
