#include "image/ScreenImageTransfer.h"

#include <utility>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "hosts/OfficeProcedures.h"
#include "image/ExcelPictureTarget.h"
#include "image/ManualCapture.h"
#include "image/WordPictureTarget.h"

namespace krv::image {
void ScreenImageTransfer::TransferToExcel(std::shared_ptr<ports::ExcelHost> excel,
                                          std::shared_ptr<ports::KRVServer> server,
                                          ports::DeviceContext context) {
    ExcelPictureTarget target(std::move(excel), m_services.resolution, context);
    Transfer(target, *server);
}

void ScreenImageTransfer::TransferToWord(std::shared_ptr<ports::WordHost> word,
                                         std::shared_ptr<ports::KRVServer> server) {
    WordPictureTarget target(std::move(word));
    Transfer(target, *server);
}

void ScreenImageTransfer::Transfer(PictureTarget& target, ports::ScreenImageServer& server) {
    if (m_isRunning) {
        return;
    }
    m_isRunning = true;
    const ScopeExit end([this] { m_isRunning = false; });
    Run(target, server);
}

void ScreenImageTransfer::Run(PictureTarget& target, ports::ScreenImageServer& server) {
    frmGetScreenImage& dialog = Dialog();
    dialog.SetPlacementCaption(target.PlacementCaption());
    dialog.ShowModal();
    if (!dialog.ImageAccepted) {
        CloseDialog();
        return;
    }
    const auto failure = FailureOf([&] {
        if (PrepareScreenImage(server, m_services.eventPump, m_services.messageBoxes) ==
            Preparation::Done) {
            Fetch(target, server);
        }
    });
    if (failure) {
        CloseDialog();
        m_services.messageBoxes.Show({failure->Description(), ScreenImageTitle,
                                      ports::MessageIcon::Critical, ports::MessageButtons::Ok});
    }
}

void ScreenImageTransfer::Fetch(PictureTarget& target, ports::ScreenImageServer& server) {
    m_services.eventPump.ProcessPendingEvents();
    target.SetBusyCursor(true);
    const ScopeExit idle([&] { TrapErrors([&] { target.SetBusyCursor(false); }); });
    if (m_dialog->PlaceInDocument) {
        FetchIntoDocument(target, server);
    } else {
        server.SaveScreenImage(m_dialog->documentSaveDestination, ports::ImageFormat::ByExtension);
    }
    CloseDialog();
}

void ScreenImageTransfer::FetchIntoDocument(PictureTarget& target,
                                            ports::ScreenImageServer& server) {
    const std::string file = hosts::TemporaryPictureFileName(m_services.process);
    const ScopeExit remove([&] { RemoveTemporaryFile(file); });
    server.SaveScreenImage(file, ports::ImageFormat::Placement);
    target.Place(file);
}

// The document has a copy of the picture, so a file that stays behind is no failure.
void ScreenImageTransfer::RemoveTemporaryFile(const std::string& file) noexcept {
    TrapErrors([&] { m_services.removal.ClearAttributes(file); });
    TrapErrors([&] { m_services.removal.Delete(file); });
}

frmGetScreenImage& ScreenImageTransfer::Dialog() {
    if (!m_dialog) {
        m_dialog = std::make_unique<frmGetScreenImage>(m_services.screen, m_services.fileDialogs);
    }
    return *m_dialog;
}

// Its controls start afresh with the next command.
void ScreenImageTransfer::CloseDialog() {
    m_dialog->Unload();
    m_dialog.reset();
}

}  // namespace krv::image
