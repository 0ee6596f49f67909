#include "about/AboutDialogs.h"

#include "about/FrmAbout.h"
#include "about/FrmVersionInfo.h"

namespace krv::about {

void AboutDialogs::ShowAbout(const std::vector<std::string>& components) {
    FrmAbout box(m_services.screen);
    box.SetProduct(m_services.versions.Own());
    box.OnVersionInfo = [&] { ShowVersions(components); };
    box.ShowModal();
    box.Unload();
}

void AboutDialogs::ShowVersions(const std::vector<std::string>& components) {
    std::vector<ports::ComponentVersion> versions{m_services.versions.Own()};
    for (const std::string& progId : components) {
        versions.push_back(m_services.versions.Find(progId));
    }
    FrmVersionInfo dialog(m_services.screen, m_services.clipboard, m_services.messageBoxes);
    dialog.SetComponents(versions);
    dialog.ShowModal();
    dialog.Unload();
}

}  // namespace krv::about
