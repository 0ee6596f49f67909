#include "bench/document/windows/DocumentApplicationObject.h"

#include "bench/document/windows/DocumentObject.h"
#include "bench/shared/windows/CollectionObject.h"

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

// The template that Word keeps command bars in.
class TemplateObject final : public AutomationObject<TemplateObject> {
 public:
    using AutomationObject::AutomationObject;

    static std::span<const Member<TemplateObject>> Members() {
        using Own = TemplateObject;
        static constexpr std::array<Member<Own>, 3> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
             {L"Saved", &Own::Saved, MemberKind::ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetName(const MemberCall&) { return AsVariant(std::string("Normal.dotm")); }
    _variant_t Saved(const MemberCall& call) {
        if (call.IsPut()) {
            Application().SetTemplateSaved(FlagIn(call.NewValue()));
        }
        return AsVariant(Application().IsTemplateSaved());
    }
};

}  // namespace

std::span<const Member<DocumentApplicationObject>> DocumentApplicationObject::Members() {
    using Own = DocumentApplicationObject;
    static constexpr auto Table = Joined(
        Rows(), std::array<Member<Own>, 6>{
                    {{L"ActiveDocument", &Own::GetActiveDocument},
                     {L"System", &Own::GetSystem},
                     {L"NormalTemplate", &Own::GetTemplate},
                     {L"Templates", &Own::GetTemplates},
                     {L"CustomizationContext", &Own::CustomizationContext, MemberKind::ReadWrite},
                     {L"StatusBar", &Own::StatusBar, MemberKind::ReadWrite}}});
    return Table;
}

OfficeAutomation::Object DocumentApplicationObject::NewDocumentObject(
    const std::shared_ptr<OfficeAutomation>& automation,
    const std::shared_ptr<OfficeDocument>& document) {
    return NewTextDocumentObject(automation, document);
}

DocumentApplicationObject::DocumentApplicationObject(
    const std::shared_ptr<OfficeAutomation>& automation)
    : ApplicationMembers(automation), m_events(this, windows::WordEventsId) {
    automation->SetEventListener(
        [this](OfficeEvent event, const OfficeAutomation::Object& document, bool& isCancelled) {
            Raise(event, document, isCancelled);
        });
}

void DocumentApplicationObject::Raise(OfficeEvent event, const OfficeAutomation::Object& object,
                                      bool& isCancelled) const {
    using namespace windows;
    const _variant_t document = AsVariant(object.Get());
    CancelArgument cancel;
    CancelArgument asksForName;
    switch (event) {
        case OfficeEvent::New:
            return m_events.Raise(WordEvent::NewDocument, {document});
        case OfficeEvent::Open:
            return m_events.Raise(WordEvent::DocumentOpen, {document});
        case OfficeEvent::Activate:
            return m_events.Raise(WordEvent::DocumentChange);
        case OfficeEvent::WindowActivate:
            return m_events.Raise(WordEvent::WindowActivate,
                                  {document, NewActiveWindow(Automation())});
        case OfficeEvent::WindowDeactivate:
            return m_events.Raise(WordEvent::WindowDeactivate,
                                  {document, NewActiveWindow(Automation())});
        case OfficeEvent::BeforeClose:
            m_events.Raise(WordEvent::DocumentBeforeClose, {document, cancel.Reference()});
            break;
        case OfficeEvent::BeforeSave:
            m_events.Raise(WordEvent::DocumentBeforeSave,
                           {document, asksForName.Reference(), cancel.Reference()});
            break;
        case OfficeEvent::Deactivate:
            // Word has no such event.
            return;
    }
    isCancelled = cancel.IsSet();
}

_variant_t DocumentApplicationObject::GetTemplate(const MemberCall&) {
    return NewObject<TemplateObject>(Automation());
}

_variant_t DocumentApplicationObject::GetTemplates(const MemberCall&) {
    return NewObject<CollectionObject>(
        Automation(),
        CollectionObject::Content{[] { return 1; },
                                  [automation = Automation()](const _variant_t& key) {
                                      if (V_VT(&key) != VT_BSTR && NumberIn(key) != 1) {
                                          throw Error(ErrorNumber::SubscriptOutOfRange);
                                      }
                                      return NewObject<TemplateObject>(automation);
                                  }});
}

// There is one template only.
_variant_t DocumentApplicationObject::CustomizationContext(const MemberCall& call) {
    return GetTemplate(call);
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
