#include "settings/FrmSetup.h"

#include "common/Error.h"

namespace krv::settings {

FrmSetup::FrmSetup(ports::FormScreen& screen) : Form("FrmSetup", screen) {
    LayOut();
    cmdClose.OnClick = [this] { Hide(); };
}

void FrmSetup::LayOut() {
    Caption = "Capture/Restore Settings";
    Place = forms::Place{0, 0, 7335, 4935};
    // It has a margin of its own.
    InstrumentState.LayOut({30, 30, 7275, 4320});
    cmdClose.LayOut({6000, 4440, 1215, 375}, "Close");
    cmdClose.IsCancel = true;
}

void FrmSetup::SetInstrSetupInfo(const std::shared_ptr<ports::StateInfo>& info) {
    Load();
    const auto control =
        std::dynamic_pointer_cast<ports::InstrumentState>(InstrumentState.Object());
    if (!control) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    control->SetStateInfo(info);
}

}  // namespace krv::settings
