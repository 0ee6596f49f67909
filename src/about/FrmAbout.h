// FrmAbout: the about box: product, version and build date, and the way to the versions of the
// suite's components. Created for each show.
#pragma once

#include "common/forms/Buttons.h"
#include "common/forms/Event.h"
#include "common/forms/Form.h"
#include "common/forms/Label.h"
#include "ports/suite/ComponentVersions.h"

namespace krv::about {

class FrmAbout final : public forms::Form {
 public:
    explicit FrmAbout(ports::FormScreen& screen);

    // Before the box is shown.
    void SetProduct(const ports::ComponentVersion& product);
    // The user asks for the versions of the components.
    forms::EventHandler OnVersionInfo;

    forms::Label lblProduct{*this, "lblProduct"};
    forms::Label lblVersion{*this, "lblVersion"};
    forms::Label lblBuildDate{*this, "lblBuildDate"};
    forms::Label lblPurpose{*this, "lblPurpose"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdVersionInfo{*this, "cmdVersionInfo"};

 private:
    void LayOut();
};

}  // namespace krv::about
