#include "hosts/OfficeProcedures.h"

#include <vector>

#include "common/ErrorTrap.h"
#include "common/ScopeExit.h"
#include "common/Text.h"
#include "hosts/ToolbarButtons.h"

namespace krv::hosts {

void SetExcelInitialToolbarState(ports::OfficeHost& excel) {
    ApplyInitialState(*excel.CommandBarByName(ToolbarName));
}

void CheckWordTemplate(ports::OfficeHost& word) {
    for (const auto& addIn : word.AddIns()) {
        if (UpperCase(addIn->Name()) == WordTemplateName) {
            addIn->SetInstalled(true);
        }
    }
}

void SetWordInitialToolbarState(ports::OfficeHost& word) {
    CheckWordTemplate(word);
    ApplyInitialState(*word.CommandBarByName(ToolbarName));
}

void ChangeUnnoticed(ports::WordHost& word, const std::function<void()>& change) {
    std::vector<std::shared_ptr<ports::WordTemplate>> saved;
    TrapErrors([&] {
        for (const auto& each : word.Templates()) {
            TrapErrors([&] {
                if (each->IsSaved()) {
                    saved.push_back(each);
                }
            });
        }
    });
    const ScopeExit unnoticed([&] {
        for (const auto& each : saved) {
            TrapErrors([&] { each->SetSaved(true); });
        }
    });
    change();
}

std::string TemporaryPictureFileName(ports::Process& process) {
    // The closing NUL is looked for in the first 254 of the buffer's 255 characters.
    constexpr std::size_t LongestFolder = 253;
    std::string folder = process.TemporaryFolder();
    if (CharacterCount(folder) > LongestFolder) {
        folder.clear();
    }
    return folder + "KRV" + std::to_string(process.Id()) + ".wmf";
}

std::shared_ptr<ports::IoSession> LiveSession(ports::InstrumentServer& server) {
    std::shared_ptr<ports::IoSession> session;
    TrapErrors([&] { session = server.Instrument()->IO(); });
    return session && session->IsAlive() ? session : nullptr;
}

void ReturnToLocal(const std::shared_ptr<ports::IoSession>& session) {
    if (!session || !session->IsAlive()) {
        return;
    }
    // After a failure the instrument stays in remote operation, which its user can end at the front
    // panel.
    TrapErrors([&] { session->ReturnToLocal(); });
}

void ReturnInstrumentToLocal(ports::InstrumentServer& server) {
    ReturnToLocal(LiveSession(server));
}

bool IsSessionSerial(ports::InstrumentServer& server) {
    bool isSerial = false;
    TrapErrors([&] {
        const auto session = LiveSession(server);
        isSerial = session && session->Serial() != nullptr;
    });
    return isSerial;
}

}  // namespace krv::hosts
