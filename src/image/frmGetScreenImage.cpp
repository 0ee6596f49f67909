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
    picturePlacement.Caption = "Place In Active Sheet";
    picturePlacement.Place = forms::Place{240, 240, 4095, 255};
    picturePlacement.Value = true;
    saveToFile.Caption = "Save to File";
    saveToFile.Place = forms::Place{240, 600, 4095, 255};
    okButton.Caption = "OK";
    okButton.Place = forms::Place{1905, 1080, 1215, 375};
    okButton.IsDefault = true;
    cancelButton.Caption = "Cancel";
    cancelButton.Place = forms::Place{3240, 1080, 1215, 375};
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
