#include "bench/document/windows/DocumentWindow.h"

#include <algorithm>

namespace krv::bench {
namespace {

constexpr UINT InsertPictureCommand = StandardCommand::FirstOwn;

const std::vector<MenuList>& MenuLists() {
    static const std::vector<MenuList> lists{
        {L"&File",
         {{StandardCommand::New, L"&New\tCtrl+N", 'N'},
          {StandardCommand::Open, L"&Open...\tCtrl+O", 'O'},
          {StandardCommand::Save, L"&Save\tCtrl+S", 'S'},
          {StandardCommand::SaveAs, L"Save &As..."},
          {},
          {StandardCommand::Exit, L"E&xit"}}},
        {L"&Insert", {{InsertPictureCommand, L"&Picture..."}}},
        {L"&Help", {{StandardCommand::About, L"&About krvdoc"}}}};
    return lists;
}

constexpr FileKind Documents{L"Documents (*.krvdoc)\0*.krvdoc\0All files\0*.*\0", L"krvdoc"};
constexpr FileKind Pictures{
    L"Pictures (*.wmf;*.emf;*.bmp;*.gif;*.jpg)\0*.wmf;*.emf;*.bmp;*.gif;*.jpg\0All files\0*.*\0",
    nullptr};

}  // namespace

constexpr MainWindow::Program DocumentWindow::DocumentProgram{
    L"KrvDoc", L"krvdoc",
    L"krvdoc is a small document window for trying the TQL/KRV toolbar control on a computer "
    L"without an office suite.\r\n\r\nIt keeps text and pictures and answers automation calls as a "
    L"word processor does, as far as the control needs them.  It is a test bench and no word "
    L"processor.",
    1000, 760};

DocumentWindow::DocumentWindow(DocumentApplication& application)
    : MainWindow(DocumentProgram, application, MenuLists()), m_application(application) {
    m_page = std::make_unique<DocumentPage>(Handle(), m_application);
    m_application.AddObserver(*this);
    ShowName();
    Start();
}

DocumentWindow::~DocumentWindow() {
    Stop();
    m_application.RemoveObserver(*this);
}

void DocumentWindow::Open(const std::string& path) {
    Try([&] {
        const auto document = m_application.Open(path);
        if (!document->Problem().empty()) {
            Report(document->Problem());
        }
    });
}

void DocumentWindow::ArrangeContent(const RECT& place) {
    MoveWindow(m_page->Handle(), 0, static_cast<int>(place.top), static_cast<int>(place.right),
               static_cast<int>(place.bottom - place.top), TRUE);
}

void DocumentWindow::Command(UINT id) {
    switch (id) {
        case StandardCommand::New:
            if (MayCloseAll()) {
                m_application.Add();
            }
            return;
        case StandardCommand::Open:
            if (MayCloseAll()) {
                if (const std::string path = AskForFile(Documents, false); !path.empty()) {
                    Open(path);
                }
            }
            return;
        case StandardCommand::Save:
        case StandardCommand::SaveAs:
            Save(id == StandardCommand::SaveAs);
            return;
        case InsertPictureCommand:
            InsertPicture();
            return;
        default:
            return;
    }
}

void DocumentWindow::InsertPicture() {
    const auto document = m_application.OpenDocument();
    if (!document) {
        return;
    }
    if (const std::string path = AskForFile(Pictures, false); !path.empty()) {
        Try([&] { document->AddPicture({.file = path}); });
    }
}

void DocumentWindow::OnChanged(DocumentChange change) {
    m_page->Follow(change);
    switch (change) {
        case DocumentChange::Document:
        case DocumentChange::File:
            ShowName();
            break;
        case DocumentChange::StatusBar:
        case DocumentChange::CommandBars:
            ShowBars();
            break;
        case DocumentChange::Cursor:
            ShowCursor();
            break;
        case DocumentChange::Text:
        case DocumentChange::Pictures:
            break;
    }
}

void DocumentWindow::ShowName() {
    const auto& document = m_application.OpenDocument();
    ShowTitle(document ? document->Name() : std::string());
}

bool DocumentWindow::Save(bool askForName) {
    const auto document = m_application.OpenDocument();
    if (!document) {
        return true;
    }
    std::string path = document->FullName();
    if (askForName || !document->HasFile()) {
        path =
            AskForFile(Documents, true, document->HasFile() ? path : document->Name() + ".krvdoc");
    }
    return !path.empty() && Try([&] { m_application.Save(*document, path); });
}

// Whether the toolbar is connected otherwise, or has other states, than the document's file says.
bool DocumentWindow::HasUnsavedControl(const Document& document) {
    return document.HasFile() && Band().Control() != nullptr && Band().Control()->IsDirty();
}

bool DocumentWindow::MayCloseAll() {
    const auto& document = m_application.OpenDocument();
    if (!document || !(document->IsModified() || HasUnsavedControl(*document))) {
        return true;
    }
    switch (AskToSave(document->Name())) {
        case IDYES:
            return Save(false);
        case IDNO:
            return true;
        default:
            return false;
    }
}

}  // namespace krv::bench
