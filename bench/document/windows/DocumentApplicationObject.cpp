#include "bench/document/windows/DocumentApplicationObject.h"

#include <array>

#include "bench/document/DocumentErrors.h"
#include "bench/document/windows/DocumentObjects.h"
#include "bench/shared/windows/BarObjects.h"

namespace krv::bench {
namespace {

class SystemObject final : public DocumentModelObject<SystemObject> {
 public:
    using DocumentModelObject::DocumentModelObject;

    static std::span<const Member<SystemObject>> Members() {
        using Own = SystemObject;
        static constexpr std::array<Member<Own>, 2> Table{
            {{L"Cursor", &Own::Cursor, MemberKind::ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<DocumentAutomation, SystemObject>;
    _variant_t Cursor(const MemberCall& call) {
        if (call.IsPut()) {
            Application().SetCursor(NumberIn(call.NewValue()));
        }
        return AsVariant(static_cast<std::int32_t>(Application().Cursor()));
    }
};

}  // namespace

std::span<const Member<DocumentApplicationObject>> DocumentApplicationObject::Members() {
    using Own = DocumentApplicationObject;
    constexpr auto ReadWrite = MemberKind::ReadWrite;
    static constexpr std::array<Member<Own>, 13> Table{
        {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
         {L"Application", &Own::GetApplication},
         {L"Parent", &Own::GetApplication},
         {L"Version", &Own::GetVersion},
         {L"ActiveDocument", &Own::GetActiveDocument},
         {L"Documents", &Own::GetDocuments},
         {L"CommandBars", &Own::GetCommandBars},
         {L"AddIns", &Own::GetAddIns},
         {L"System", &Own::GetSystem},
         {L"StatusBar", &Own::StatusBar, ReadWrite},
         {L"DisplayStatusBar", &Own::DisplayStatusBar, ReadWrite},
         {L"Visible", &Own::Visible, ReadWrite},
         {L"Quit", &Own::Quit, MemberKind::Method}}};
    return Table;
}

void* DocumentApplicationObject::FindInterface(REFIID id) noexcept {
    return id == WordApplicationId ? static_cast<IDispatch*>(this)
                                   : DocumentModelObject::FindInterface(id);
}

_variant_t DocumentApplicationObject::GetActiveDocument(const MemberCall&) {
    return Give(Automation()->ActiveDocumentObject());
}

_variant_t DocumentApplicationObject::GetDocuments(const MemberCall&) {
    return NewDocuments(Automation());
}

_variant_t DocumentApplicationObject::GetCommandBars(const MemberCall&) {
    return NewCommandBars(Automation());
}

_variant_t DocumentApplicationObject::GetAddIns(const MemberCall&) {
    return NewAddIns(Automation());
}

_variant_t DocumentApplicationObject::GetSystem(const MemberCall&) {
    return Give(windows::MakeCom<SystemObject>(Automation()));
}

// Takes texts and doesn't give them back.
_variant_t DocumentApplicationObject::StatusBar(const MemberCall& call) {
    if (!call.IsPut()) {
        throw Error(DocumentErrorNumber::PropertyIsWriteOnly, "Property is write-only");
    }
    Application().SetStatus(TextIn(call.NewValue()));
    return {};
}

_variant_t DocumentApplicationObject::DisplayStatusBar(const MemberCall& call) {
    if (call.IsPut()) {
        Application().DisplayStatusBar(FlagIn(call.NewValue()));
    }
    return AsVariant(Application().IsStatusBarDisplayed());
}

_variant_t DocumentApplicationObject::Visible(const MemberCall& call) {
    if (call.IsPut()) {
        Automation()->Window().Show(FlagIn(call.NewValue()));
    }
    return AsVariant(Automation()->Window().IsShown());
}

_variant_t DocumentApplicationObject::Quit(const MemberCall&) {
    Automation()->Window().Quit();
    return {};
}

}  // namespace krv::bench
