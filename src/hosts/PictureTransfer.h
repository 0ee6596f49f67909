// What carries out an adapter's DoPictureTransfer.
#pragma once

#include "ports/desktop/ControlSurface.h"
#include "ports/office/ExcelHost.h"
#include "ports/office/WordHost.h"
#include "ports/suite/KRVServer.h"

namespace krv::hosts {

class PictureTransfer {
 public:
    virtual ~PictureTransfer() = default;
    // The device context is one of the screen that the sheet is on. Throws Error.
    virtual void TransferToExcel(ports::ExcelHost& excel, ports::KRVServer& server,
                                 ports::DeviceContext context) = 0;
    // Into the active document. Throws Error.
    virtual void TransferToWord(ports::WordHost& word, ports::KRVServer& server) = 0;
};

}  // namespace krv::hosts
