#include "hosts/AppConnectionWord.h"

#include "common/AsKind.h"
#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "hosts/OfficeProcedures.h"

namespace krv::hosts {
namespace {

// The members for measured data, which Word has no place for.
[[noreturn]] void Refuse() {
    throw Error(ErrorNumber::Unspecified, {});
}

}  // namespace

AppConnectionWord::AppConnectionWord(const HostServices& services)
    : OfficeConnection(services,
                       {.addInName = WordTemplateName, .helpFileName = "\\krvwtool.chm"}) {}

bool AppConnectionWord::DoDataTransfer(bool /*immed*/, DateValue /*startDate*/,
                                       std::int32_t /*num_samples*/, double /*intervalInSeconds*/) {
    Refuse();
}

void AppConnectionWord::TransferDataToApp() {
    Refuse();
}

void AppConnectionWord::EnableRepeatMeaureButtons() {
    Refuse();
}

void AppConnectionWord::EnableSingleMeaureButtons() {
    Refuse();
}

void AppConnectionWord::DoPictureTransfer() {
    m_services.pictures.TransferToWord(Word(), Server());
}

bool AppConnectionWord::Init(const std::shared_ptr<ports::HostApplication>& app,
                             const std::shared_ptr<ports::KRVServer>& server, HostedControl& ctl,
                             ports::DeviceContext m_HDC) {
    if (!TrapErrors([&] { Attach(app, ctl); })) {
        return false;
    }
    Adopt(server, ctl, m_HDC);
    return true;
}

void AppConnectionWord::Attach(const std::shared_ptr<ports::HostApplication>& app,
                               HostedControl& ctl) {
    if (app) {
        m_wordApp = AsKind<ports::WordHost>(app);
        return;
    }
    const auto utilities = m_services.suite.CreateUtilities();
    const auto document = utilities->ContainingDocument(ctl.Surface());
    m_wordApp = AsKind<ports::WordDocument>(document)->Application();
}

void AppConnectionWord::SetHostInitialState() {
    SetWordInitialToolbarState(*Word());
}

void AppConnectionWord::ChangeHostBar(const std::function<void()>& change) {
    ChangeUnnoticed(*Word(), change);
}

void AppConnectionWord::AfterEnabling() {
    CheckWordTemplate(*Word());
}

const std::shared_ptr<ports::WordHost>& AppConnectionWord::Word() {
    if (!m_wordApp) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return m_wordApp;
}

}  // namespace krv::hosts
