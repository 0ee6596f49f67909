// PictureTransfer: carries out an adapter's DoPictureTransfer.
#pragma once

#include <memory>

#include "ports/desktop/ControlSurface.h"
#include "ports/office/ExcelHost.h"
#include "ports/office/WordHost.h"
#include "ports/suite/KRVServer.h"

namespace krv::hosts {

class PictureTransfer {
 public:
    virtual ~PictureTransfer() = default;
    // Both share what they are given until they end: an adapter may attach to another application
    // while they wait for the user. The device context is one of the screen that the sheet is on.
    // Each throws Error.
    virtual void TransferToExcel(std::shared_ptr<ports::ExcelHost> excel,
                                 std::shared_ptr<ports::KRVServer> server,
                                 ports::DeviceContext context) = 0;
    // Into the active document.
    virtual void TransferToWord(std::shared_ptr<ports::WordHost> word,
                                std::shared_ptr<ports::KRVServer> server) = 0;
};

}  // namespace krv::hosts
