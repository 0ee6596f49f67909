// CommonDialog: the non-visual control behind a browse button.
#pragma once

#include <string>

#include "common/forms/Control.h"
#include "ports/desktop/FileDialogs.h"

namespace krv::forms {

class CommonDialog final : public Control {
 public:
    // The file dialogs outlive the control.
    CommonDialog(Form& form, std::string name, desktop::FileDialogs& dialogs);
    std::string DialogTitle;
    std::string Filter;
    std::string FileName;

    // Shows the open dialog; a chosen path becomes FileName. Returns false when it was cancelled.
    bool ShowOpen();

 private:
    void DescribeKind(std::string& text) const override;
    desktop::FileDialogs& m_dialogs;
};

}  // namespace krv::forms
