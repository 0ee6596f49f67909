#include "about/FrmAbout.h"

namespace krv::about {

FrmAbout::FrmAbout(ports::FormScreen& screen) : Form("FrmAbout", screen) {
    LayOut();
    cmdOK.OnClick = [this] { Hide(); };
    cmdVersionInfo.OnClick = [this] {
        if (OnVersionInfo) {
            OnVersionInfo();
        }
    };
}

void FrmAbout::LayOut() {
    Caption = "About Corvane Tallyport for TQL/KRV";
    Place = forms::Place{0, 0, 5400, 2520};
    lblProduct.LayOut({240, 240, 4920, 255}, "Corvane Tallyport for TQL/KRV");
    lblVersion.LayOut({240, 540, 4920, 255});
    lblBuildDate.LayOut({240, 810, 4920, 255});
    lblPurpose.LayOut(
        {240, 1200, 4920, 495},
        "Drives Corvane KRV and TQL signal generators from Microsoft Excel and Microsoft Word.");
    cmdVersionInfo.LayOut({240, 1935, 2055, 375}, "Version Information...");
    cmdOK.LayOut({3945, 1935, 1215, 375}, "OK");
    cmdOK.IsDefault = true;
    cmdOK.IsCancel = true;
}

void FrmAbout::SetProduct(const ports::ComponentVersion& product) {
    lblVersion.Caption = product.version.empty() ? "" : "Version " + product.version;
    lblBuildDate.Caption = product.buildDate.empty() ? "" : "Built on " + product.buildDate;
}

}  // namespace krv::about
