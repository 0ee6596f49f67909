#include "about/FrmVersionInfo.h"

#include "common/ErrorTrap.h"
#include "common/Joined.h"
#include "common/Text.h"

namespace krv::about {
namespace {

forms::ListView::Row RowOf(const ports::ComponentVersion& component) {
    if (!component.isInstalled) {
        return {component.name, "not installed", "", component.path};
    }
    const std::string version = component.version.empty() ? "unknown" : component.version;
    return {component.name, version, component.buildDate, component.path};
}

std::string LineOf(const std::vector<std::string>& texts) {
    return Joined(texts, "\t") + std::string(CrLf);
}

}  // namespace

FrmVersionInfo::FrmVersionInfo(ports::FormScreen& screen, ports::Clipboard& clipboard,
                               ports::MessageBoxes& messageBoxes)
    : Form("FrmVersionInfo", screen), m_clipboard(clipboard), m_messageBoxes(messageBoxes) {
    LayOut();
    cmdCopy.OnClick = [this] { Copy(); };
    cmdClose.OnClick = [this] { Hide(); };
}

void FrmVersionInfo::LayOut() {
    Caption = "Version Information";
    Place = forms::Place{0, 0, 10200, 3720};
    lvwComponents.LayOut({120, 120, 9960, 2940});
    lvwComponents.Columns = {
        {"Component", 2925}, {"Version", 1200}, {"Build Date", 1200}, {"Path", 4530}};
    cmdCopy.LayOut({6960, 3210, 1815, 375}, "Copy to Clipboard");
    cmdClose.LayOut({8865, 3210, 1215, 375}, "Close");
    cmdClose.IsDefault = true;
    cmdClose.IsCancel = true;
}

void FrmVersionInfo::SetComponents(const std::vector<ports::ComponentVersion>& components) {
    std::vector<forms::ListView::Row> rows;
    for (const ports::ComponentVersion& component : components) {
        rows.push_back(RowOf(component));
    }
    lvwComponents.Items = rows;
}

bool FrmVersionInfo::OnKeyDown(int keyCode, bool shift, bool control, bool alt) {
    if (keyCode != 'C' || !control || shift || alt) {
        return false;
    }
    Copy();
    return true;
}

void FrmVersionInfo::Copy() {
    if (const auto failure = FailureOf([this] { m_clipboard.SetText(AsText()); })) {
        m_messageBoxes.Show({failure->Description(), Caption.Get(), ports::MessageIcon::Critical,
                             ports::MessageButtons::Ok});
    }
}

std::string FrmVersionInfo::AsText() const {
    std::vector<std::string> headings;
    for (const forms::ListColumn& column : lvwComponents.Columns) {
        headings.push_back(column.heading);
    }
    std::string text = LineOf(headings);
    for (const forms::ListView::Row& row : lvwComponents.Items.Get()) {
        text += LineOf(row);
    }
    return text;
}

}  // namespace krv::about
