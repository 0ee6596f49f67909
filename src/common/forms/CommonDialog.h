// CommonDialog: the non-visual control behind a browse button.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "common/forms/Control.h"
#include "ports/desktop/FileDialogs.h"

namespace krv::forms {

class CommonDialog final : public Control {
 public:
    // The file dialogs outlive the control.
    CommonDialog(Form& form, std::string name, ports::FileDialogs& dialogs);
    std::string DialogTitle;
    std::string Filter;
    std::string FileName;
    // ports::FileDialogFlag bits.
    std::uint32_t Flags = 0;

    // Shows the open dialog; a chosen path becomes FileName. Returns false when it was cancelled.
    bool ShowOpen();
    // The same with the save dialog.
    bool ShowSave();

 private:
    bool Take(std::optional<std::string> chosen);
    void DescribeKind(std::string& text) const override;
    ports::FileDialogs& m_dialogs;
};

}  // namespace krv::forms
