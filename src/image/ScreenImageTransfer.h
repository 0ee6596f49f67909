// ScreenImageTransfer: the command that brings the instrument's screen image into the host's
// document or into a file.
//
// One serves all adapters of a thread. It owns the destination dialog. The dialog stays loaded when
// the user gives the command up at the instrument and is unloaded at the end of any other.
#pragma once

#include <memory>

#include "hosts/PictureTransfer.h"
#include "image/PictureTarget.h"
#include "image/frmGetScreenImage.h"
#include "ports/desktop/Desktop.h"
#include "ports/desktop/FileRemoval.h"
#include "ports/desktop/Process.h"
#include "ports/desktop/ScreenResolution.h"

namespace krv::image {

// References to services that outlive the transfer.
struct ImageServices {
    ports::FormScreen& screen;
    ports::MessageBoxes& messageBoxes;
    ports::FileDialogs& fileDialogs;
    ports::EventPump& eventPump;
    ports::ScreenResolution& resolution;
    ports::Process& process;
    ports::FileRemoval& removal;
};

class ScreenImageTransfer final : public hosts::PictureTransfer {
 public:
    explicit ScreenImageTransfer(const ImageServices& services) : m_services(services) {}

    void TransferToExcel(std::shared_ptr<ports::ExcelHost> excel,
                         std::shared_ptr<ports::KRVServer> server,
                         ports::DeviceContext context) override;
    void TransferToWord(std::shared_ptr<ports::WordHost> word,
                        std::shared_ptr<ports::KRVServer> server) override;

    // The command itself; target and server outlive it. A failure of the server or the host is
    // shown and not thrown. Does nothing when it is called again meanwhile, from an event that it
    // let through.
    void Transfer(PictureTarget& target, ports::ScreenImageServer& server);

 private:
    void Run(PictureTarget& target, ports::ScreenImageServer& server);
    frmGetScreenImage& Dialog();
    void CloseDialog();
    void Fetch(PictureTarget& target, ports::ScreenImageServer& server);
    void FetchIntoDocument(PictureTarget& target, ports::ScreenImageServer& server);
    void RemoveTemporaryFile(const std::string& file) noexcept;

    ImageServices m_services;
    std::unique_ptr<frmGetScreenImage> m_dialog;
    bool m_isRunning = false;
};

}  // namespace krv::image
