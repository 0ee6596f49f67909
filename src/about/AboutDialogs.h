// AboutDialogs: shows the about box, and from it the versions of the components.
#pragma once

#include "about/AboutBox.h"
#include "ports/desktop/Clipboard.h"
#include "ports/desktop/FormScreen.h"
#include "ports/desktop/MessageBoxes.h"
#include "ports/suite/ComponentVersions.h"

namespace krv::about {

// References to services that outlive the dialogs.
struct AboutServices {
    ports::FormScreen& screen;
    ports::MessageBoxes& messageBoxes;
    ports::Clipboard& clipboard;
    ports::ComponentVersions& versions;
};

class AboutDialogs final : public AboutBox {
 public:
    explicit AboutDialogs(const AboutServices& services) : m_services(services) {}
    void ShowAbout(const std::vector<std::string>& components) override;

 private:
    // The component that asks comes first.
    void ShowVersions(const std::vector<std::string>& components);

    AboutServices m_services;
};

}  // namespace krv::about
