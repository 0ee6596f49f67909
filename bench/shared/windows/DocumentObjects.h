// What the automation objects of workbooks and of text documents have alike.
#pragma once

#include <memory>

#include "bench/shared/windows/AutomationObject.h"

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

    static constexpr std::array<Member<Own>, 2> Rows() {
        return {{{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
                 {L"Application", &Own::GetApplication}}};
    }

    [[nodiscard]] std::shared_ptr<OfficeDocument> Document() const {
        return this->Automation()->RequireOpen(m_document);
    }

    _variant_t GetName(const MemberCall&) { return AsVariant(Document()->Name()); }

 private:
    std::weak_ptr<OfficeDocument> m_document;
};

#pragma GCC diagnostic pop

}  // namespace krv::bench
