#include "common/forms/CommonDialog.h"

#include <utility>

namespace krv::forms {

CommonDialog::CommonDialog(Form& form, std::string name, desktop::FileDialogs& dialogs)
    : Control(form, ControlKind::CommonDialog, std::move(name), nullptr, NoIndex),
      m_dialogs(dialogs) {}

bool CommonDialog::ShowOpen() {
    const auto chosen = m_dialogs.ChooseFileToOpen({DialogTitle, Filter, FileName});
    if (!chosen) {
        return false;
    }
    FileName = *chosen;
    return true;
}

void CommonDialog::DescribeKind(std::string& text) const {
    AppendQuoted(text, DialogTitle);
}

}  // namespace krv::forms
