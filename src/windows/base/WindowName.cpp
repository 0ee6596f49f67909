#include "windows/base/WindowName.h"

#include <string>

#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

// The property's name carries the text, since a property's value means nothing to other processes.
std::wstring PropertyName(std::string_view name) {
    return L"KRVName:" + ToWide(name);
}

}  // namespace

void AddWindowName(HWND window, std::string_view name) {
    SetPropW(window, PropertyName(name).c_str(), window);
}

void RemoveWindowName(HWND window, std::string_view name) {
    RemovePropW(window, PropertyName(name).c_str());
}

bool HasWindowName(HWND window, std::string_view name) {
    return GetPropW(window, PropertyName(name).c_str()) != nullptr;
}

}  // namespace krv::windows
