// frmGetScreenImage: the modal dialog that asks where the instrument's screen image goes: into the
// host's document or into a file. It hides itself; its caller then reads the results and unloads
// it.
#pragma once

#include <string>

#include "common/forms/Controls.h"
#include "common/forms/Form.h"
#include "ports/desktop/FileDialogs.h"

namespace krv::image {

class frmGetScreenImage final : public forms::Form {
 public:
    // Both services outlive the form.
    frmGetScreenImage(ports::FormScreen& screen, ports::FileDialogs& fileDialogs);

    // What the host calls the place in its document.
    void SetPlacementCaption(const std::string& caption) { picturePlacement.Caption = caption; }

    // --- results. They keep their values while the dialog stays loaded ---------------------------
    bool PlaceInDocument = false;
    bool ImageAccepted = true;
    // The full name of the file; only when one was chosen.
    std::string documentSaveDestination;

    forms::OptionButton picturePlacement{*this, "picturePlacement"};
    forms::OptionButton saveToFile{*this, "saveToFile"};
    forms::CommandButton okButton{*this, "okButton"};
    forms::CommandButton cancelButton{*this, "cancelButton"};
    forms::CommonDialog saveDialog;

 protected:
    void OnLoad() override;
    void OnQueryClose() override { Abandon(); }

 private:
    void LayOut();
    void Accept();
    void Abandon();
    // False when no file was named.
    bool ChooseFile();
};

}  // namespace krv::image
