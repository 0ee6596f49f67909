#include "common/forms/CommonDialog.h"

#include <utility>

namespace krv::forms {

CommonDialog::CommonDialog(Form& form, std::string name, ports::FileDialogs& dialogs)
    : Control(form, ControlKind::CommonDialog, std::move(name), nullptr, NoIndex),
      m_dialogs(dialogs) {}

bool CommonDialog::ShowOpen() {
    return Take(m_dialogs.ChooseFileToOpen({DialogTitle, Filter, FileName, Flags}));
}

bool CommonDialog::ShowSave() {
    return Take(m_dialogs.ChooseFileToSave({DialogTitle, Filter, FileName, Flags}));
}

bool CommonDialog::Take(std::optional<std::string> chosen) {
    if (!chosen) {
        return false;
    }
    FileName = std::move(*chosen);
    return true;
}

void CommonDialog::DescribeKind(std::string& text) const {
    AppendQuoted(text, DialogTitle);
}

}  // namespace krv::forms
