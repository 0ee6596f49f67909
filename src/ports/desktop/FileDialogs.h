// The platform's common file dialogs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace krv::ports {

// Options of a file dialog, as bits of the platform's own numbers.
namespace FileDialogFlag {
// Asks before a file that is there is chosen to be saved to.
inline constexpr std::uint32_t OverwritePrompt = 0x2;
inline constexpr std::uint32_t PathMustExist = 0x800;
}  // namespace FileDialogFlag

struct FileDialogRequest {
    std::string title;
    // "Description|*.a;*.b|Description|*.c", pairs separated by bars.
    std::string filter;
    // The name shown at first; may be empty.
    std::string fileName;
    // FileDialogFlag bits.
    std::uint32_t flags = 0;
};

class FileDialogs {
 public:
    virtual ~FileDialogs() = default;
    // The full path that the user chose, or nothing when the dialog was cancelled.
    virtual std::optional<std::string> ChooseFileToOpen(const FileDialogRequest& request) = 0;
    // The same for a file that need not be there. A name without an extension gets that of the
    // chosen kind of file.
    virtual std::optional<std::string> ChooseFileToSave(const FileDialogRequest& request) = 0;
};

}  // namespace krv::ports
