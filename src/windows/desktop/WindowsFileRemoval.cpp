#include "windows/desktop/WindowsFileRemoval.h"

#include <windows.h>

#include "common/Error.h"
#include "windows/base/WideText.h"

namespace krv::windows {
namespace {

void Require(BOOL done) {
    if (done == 0) {
        const DWORD failure = GetLastError();
        throw Error(failure == ERROR_FILE_NOT_FOUND || failure == ERROR_PATH_NOT_FOUND
                        ? ErrorNumber::FileNotFound
                        : ErrorNumber::PathFileAccess);
    }
}

}  // namespace

void WindowsFileRemoval::ClearAttributes(const std::string& path) {
    Require(SetFileAttributesW(ToWide(path).c_str(), FILE_ATTRIBUTE_NORMAL));
}

void WindowsFileRemoval::Delete(const std::string& path) {
    Require(DeleteFileW(ToWide(path).c_str()));
}

}  // namespace krv::windows
