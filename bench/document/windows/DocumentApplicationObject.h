// DocumentApplicationObject: the automation object of the application, shaped like Word's.
// Late-bound only: it answers for Word's application interface with IDispatch, so that hosts of
// add-ins can be told apart, and offers no vtable beyond that.
#pragma once

#include "bench/document/windows/DocumentAutomation.h"

namespace krv::bench {

inline constexpr IID WordApplicationId{
    0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

class DocumentApplicationObject final : public DocumentModelObject<DocumentApplicationObject> {
 public:
    using DocumentModelObject::DocumentModelObject;

    static std::span<const Member<DocumentApplicationObject>> Members();

 protected:
    void* FindInterface(REFIID id) noexcept override;

 private:
    friend class OfficeObject<DocumentAutomation, DocumentApplicationObject>;
    _variant_t GetName(const MemberCall&) { return AsVariant(std::string("krvdoc")); }
    _variant_t GetVersion(const MemberCall&) { return AsVariant(std::string("1.0")); }
    _variant_t GetActiveDocument(const MemberCall&);
    _variant_t GetDocuments(const MemberCall&);
    _variant_t GetCommandBars(const MemberCall&);
    _variant_t GetAddIns(const MemberCall&);
    _variant_t GetSystem(const MemberCall&);
    _variant_t StatusBar(const MemberCall& call);
    _variant_t DisplayStatusBar(const MemberCall& call);
    _variant_t Visible(const MemberCall& call);
    _variant_t Quit(const MemberCall&);
};

}  // namespace krv::bench
