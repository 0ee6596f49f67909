// The platform's common file dialogs.
#pragma once

#include <optional>
#include <string>

namespace krv::desktop {

struct FileDialogRequest {
    std::string title;
    // "Description|*.a;*.b|Description|*.c", pairs separated by bars.
    std::string filter;
    // The name shown at first; may be empty.
    std::string fileName;
};

class FileDialogs {
 public:
    virtual ~FileDialogs() = default;
    // The full path that the user chose, or nothing when the dialog was cancelled.
    virtual std::optional<std::string> ChooseFileToOpen(const FileDialogRequest& request) = 0;
};

}  // namespace krv::desktop
