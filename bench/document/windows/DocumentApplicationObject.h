// DocumentApplicationObject: the automation object of krvdoc, shaped like Word's.
#pragma once

#include <memory>

#include "bench/document/DocumentApplication.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ApplicationMembers.h"

namespace krv::bench {

class DocumentApplicationObject final : public ApplicationMembers<DocumentApplicationObject> {
 public:
    static constexpr IID PublishedId{
        0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    static constexpr const char* AddInName = "KRV.DOT";
    static constexpr const char* ClassName = "Word.Application";
    static constexpr CLSID ClassId = KrvDocClassId;
    [[nodiscard]] static OfficeAutomation::Object NewDocumentObject(
        const std::shared_ptr<OfficeAutomation>& automation,
        const std::shared_ptr<OfficeDocument>& document);

    // The automation's application is a DocumentApplication.
    using ApplicationMembers::ApplicationMembers;

    static std::span<const Member<DocumentApplicationObject>> Members();

 private:
    _variant_t GetActiveDocument(const MemberCall&);
    _variant_t GetSystem(const MemberCall&);
    _variant_t StatusBar(const MemberCall& call);
};

}  // namespace krv::bench
