#include "bench/document/windows/DocumentApplicationObject.h"

#include "bench/document/windows/DocumentObject.h"

namespace krv::bench {
namespace {

// The numbers that callers know.
constexpr std::int32_t PropertyIsWriteOnly = 394;
constexpr std::int32_t NoDocumentOpen = 4248;

class SystemObject final : public AutomationObject<SystemObject> {
 public:
    using AutomationObject::AutomationObject;

    static std::span<const Member<SystemObject>> Members() {
        using Own = SystemObject;
        static constexpr std::array<Member<Own>, 2> Table{
            {{L"Cursor", &Own::Cursor, MemberKind::ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t Cursor(const MemberCall& call) {
        if (call.IsPut()) {
            Application().SetCursor(NumberIn(call.NewValue()));
        }
        return AsVariant(Application().Cursor());
    }
};

}  // namespace

std::span<const Member<DocumentApplicationObject>> DocumentApplicationObject::Members() {
    using Own = DocumentApplicationObject;
    static constexpr auto Table = Joined(
        Rows(),
        std::array<Member<Own>, 3>{{{L"ActiveDocument", &Own::GetActiveDocument},
                                    {L"System", &Own::GetSystem},
                                    {L"StatusBar", &Own::StatusBar, MemberKind::ReadWrite}}});
    return Table;
}

OfficeAutomation::Object DocumentApplicationObject::NewDocumentObject(
    const std::shared_ptr<OfficeAutomation>& automation,
    const std::shared_ptr<OfficeDocument>& document) {
    return NewTextDocumentObject(automation, document);
}

_variant_t DocumentApplicationObject::GetActiveDocument(const MemberCall&) {
    const auto& document = Application().Active();
    if (!document) {
        throw Error(NoDocumentOpen, "This command is not available because no document is open.");
    }
    return AsVariant(Automation()->ObjectOf(document).Get());
}

_variant_t DocumentApplicationObject::GetSystem(const MemberCall&) {
    return NewObject<SystemObject>(Automation());
}

// Takes texts and doesn't give them back.
_variant_t DocumentApplicationObject::StatusBar(const MemberCall& call) {
    if (!call.IsPut()) {
        throw Error(PropertyIsWriteOnly, "Property is write-only");
    }
    Application().SetStatus(TextIn(call.NewValue()));
    return {};
}

}  // namespace krv::bench
