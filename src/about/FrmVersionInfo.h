// FrmVersionInfo: the modal dialog that lists the suite's components with version, build date and
// the full path of their files, for the user to read and to copy. Created for each show.
#pragma once

#include <string>
#include <vector>

#include "common/forms/Buttons.h"
#include "common/forms/Form.h"
#include "common/forms/ListView.h"
#include "ports/desktop/Clipboard.h"
#include "ports/desktop/MessageBoxes.h"
#include "ports/suite/ComponentVersions.h"

namespace krv::about {

class FrmVersionInfo final : public forms::Form {
 public:
    FrmVersionInfo(ports::FormScreen& screen, ports::Clipboard& clipboard,
                   ports::MessageBoxes& messageBoxes);

    // Before the dialog is shown.
    void SetComponents(const std::vector<ports::ComponentVersion>& components);

    forms::ListView lvwComponents{*this, "lvwComponents"};
    forms::CommandButton cmdCopy{*this, "cmdCopy"};
    forms::CommandButton cmdClose{*this, "cmdClose"};

 protected:
    // Ctrl+C copies, as in other lists.
    bool OnKeyDown(int keyCode, bool shift, bool control, bool alt) override;

 private:
    void LayOut();
    void Copy();
    // One line a component, columns apart by tab stops, headings first.
    [[nodiscard]] std::string AsText() const;

    ports::Clipboard& m_clipboard;
    ports::MessageBoxes& m_messageBoxes;
};

}  // namespace krv::about
