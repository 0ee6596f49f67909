// FrmSetup: the modal dialog in which the user captures and restores instrument settings, by the
// suite's instrument-state control. Created for each settings command and unloaded after it.
#pragma once

#include <memory>

#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "ports/suite/StateInfo.h"
#include "ports/suite/SuiteComponents.h"

namespace krv::settings {

class FrmSetup final : public forms::Form {
 public:
    explicit FrmSetup(ports::FormScreen& screen);

    // Gives the state control its list, which loads the dialog. Throws Error when the control can't
    // be created or refuses the list.
    void SetInstrSetupInfo(const std::shared_ptr<ports::StateInfo>& info);

    forms::ForeignControl InstrumentState{*this, "InstrumentState", ports::ProgId::InstrumentState};
    forms::CommandButton cmdClose{*this, "cmdClose"};

 private:
    void LayOut();
};

}  // namespace krv::settings
