#include "image/frmGetScreenImage.h"

namespace krv::image {
namespace {

constexpr const char* SaveFilter =
    "GIF (*.gif)|*.gif|Windows Bitmap (*.bmp)|*.bmp|Windows Metafile (*.wmf)|*.wmf|"
    "JPEG File Interchange Format (*.jpg)|*.jpg|Tagged Image File Format (*.tif)|*.tif|"
    "Windows Enhanced Metafile (*.emf)|*.emf";

}  // namespace

frmGetScreenImage::frmGetScreenImage(ports::FormScreen& screen, ports::FileDialogs& fileDialogs)
    : Form("frmGetScreenImage", screen), saveDialog(*this, "saveDialog", fileDialogs) {
    LayOut();
    okButton.OnClick = [this] { Accept(); };
    cancelButton.OnClick = [this] { Abandon(); };
}

void frmGetScreenImage::LayOut() {
    Caption = "Get Screen Image";
    Place = forms::Place{0, 0, 4575, 1575};
    picturePlacement.LayOut({240, 240, 4095, 255}, "Place In Active Sheet");
    picturePlacement.Value = true;
    saveToFile.LayOut({240, 600, 4095, 255}, "Save to File");
    okButton.LayOut({1905, 1080, 1215, 375}, "OK");
    okButton.IsDefault = true;
    cancelButton.LayOut({3240, 1080, 1215, 375}, "Cancel");
    cancelButton.IsCancel = true;
}

void frmGetScreenImage::OnLoad() {
    PlaceInDocument = false;
    ImageAccepted = true;
    saveDialog.Filter = SaveFilter;
}

void frmGetScreenImage::Accept() {
    ImageAccepted = true;
    if (saveToFile.Value) {
        ImageAccepted = ChooseFile();
    } else {
        PlaceInDocument = true;
    }
    Hide();
}

bool frmGetScreenImage::ChooseFile() {
    saveDialog.Flags |=
        ports::FileDialogFlag::OverwritePrompt | ports::FileDialogFlag::PathMustExist;
    if (!saveDialog.ShowSave() || saveDialog.FileName.empty()) {
        return false;
    }
    documentSaveDestination = saveDialog.FileName;
    return true;
}

void frmGetScreenImage::Abandon() {
    ImageAccepted = false;
    Hide();
}

}  // namespace krv::image
