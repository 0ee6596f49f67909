// What the automation objects of workbooks and of text documents have alike.
#pragma once

#include <memory>

#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/PartObjects.h"

namespace krv::bench {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The members that each document has. They throw Error 424 once it is closed. Own has PublishedId,
// the interface that it answers for.
template <class Own>
class DocumentMembers : public AutomationObject<Own> {
 public:
    DocumentMembers(const std::shared_ptr<OfficeAutomation>& automation,
                    const std::shared_ptr<OfficeDocument>& document)
        : AutomationObject<Own>(automation), m_document(document) {}

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == Own::PublishedId ? static_cast<IDispatch*>(this)
                                      : AutomationObject<Own>::FindInterface(id);
    }

    static constexpr std::array<Member<Own>, 7> Rows() {
        return {{{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
                 {L"FullName", &Own::GetFullName},
                 {L"Saved", &Own::Saved, MemberKind::ReadWrite},
                 {L"SaveAs", &Own::SaveAs, MemberKind::TakesArguments},
                 {L"Close", &Own::Close, MemberKind::TakesArguments},
                 {L"CustomXMLParts", &Own::GetXmlParts},
                 {L"Application", &Own::GetApplication}}};
    }

    [[nodiscard]] std::shared_ptr<OfficeDocument> Document() const {
        return this->Automation()->RequireOpen(m_document);
    }

    _variant_t GetName(const MemberCall&) { return AsVariant(Document()->Name()); }
    _variant_t GetFullName(const MemberCall&) { return AsVariant(Document()->FullName()); }
    _variant_t Saved(const MemberCall& call) {
        if (call.IsPut()) {
            Document()->SetModified(!FlagIn(call.NewValue()));
        }
        return AsVariant(!Document()->IsModified());
    }
    _variant_t SaveAs(const MemberCall& call) {
        this->Application().SaveAs(*Document(), call.Text(0));
        return {};
    }
    // Without a question: what isn't saved is given up.
    _variant_t Close(const MemberCall&) {
        if (const auto document = Document(); !this->Application().IsKeptOpen(document)) {
            this->Application().Close(document);
        }
        return {};
    }
    _variant_t GetXmlParts(const MemberCall&) {
        return NewXmlParts(this->Automation(), Document());
    }

 private:
    std::weak_ptr<OfficeDocument> m_document;
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
