#include "image/ScreenImageTransfer.h"

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "hosts/OfficeProcedures.h"
#include "image/ExcelPictureHost.h"
#include "image/ManualCapture.h"
#include "image/WordPictureHost.h"

namespace krv::image {
void ScreenImageTransfer::TransferToExcel(ports::ExcelHost& excel, ports::KRVServer& server,
                                          ports::DeviceContext context) {
    ExcelPictureHost host(excel, m_services.resolution, context);
    Transfer(host, server);
}

void ScreenImageTransfer::TransferToWord(ports::WordHost& word, ports::KRVServer& server) {
    WordPictureHost host(word);
    Transfer(host, server);
}

void ScreenImageTransfer::Transfer(PictureHost& host, ports::ScreenImageServer& server) {
    if (m_isRunning) {
        return;
    }
    m_isRunning = true;
    const ScopeExit end([this] { m_isRunning = false; });
    Run(host, server);
}

void ScreenImageTransfer::Run(PictureHost& host, ports::ScreenImageServer& server) {
    frmGetScreenImage& dialog = Dialog();
    dialog.SetPlacementCaption(host.PlacementCaption());
    dialog.ShowModal();
    if (!dialog.ImageAccepted) {
        CloseDialog();
        return;
    }
    const auto failure = FailureOf([&] {
        if (PrepareScreenImage(server, m_services.eventPump, m_services.messageBoxes)) {
            Fetch(host, server);
        }
    });
    if (failure) {
        CloseDialog();
        m_services.messageBoxes.Show({failure->Description(), ScreenImageTitle,
                                      ports::MessageIcon::Critical, ports::MessageButtons::Ok});
    }
}

void ScreenImageTransfer::Fetch(PictureHost& host, ports::ScreenImageServer& server) {
    m_services.eventPump.ProcessPendingEvents();
    host.SetBusyCursor(true);
    const ScopeExit idle([&] { TrapErrors([&] { host.SetBusyCursor(false); }); });
    if (m_dialog->PlaceInDocument) {
        FetchIntoDocument(host, server);
    } else {
        server.SaveScreenImage(m_dialog->documentSaveDestination, ports::ImageFormat::ByExtension);
    }
    CloseDialog();
}

void ScreenImageTransfer::FetchIntoDocument(PictureHost& host, ports::ScreenImageServer& server) {
    const std::string file = hosts::TemporaryPictureFileName(m_services.process);
    const ScopeExit remove([&] { RemoveTemporaryFile(file); });
    server.SaveScreenImage(file, ports::ImageFormat::Placement);
    host.Place(file);
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
