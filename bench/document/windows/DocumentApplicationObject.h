// DocumentApplicationObject: the automation object of krvdoc, shaped like Word's.
#pragma once

#include <memory>

#include "bench/document/DocumentApplication.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ApplicationMembers.h"
#include "bench/shared/windows/CancelArgument.h"
#include "windows/automation/ConnectionPoint.h"
#include "windows/extensibility/OfficeEvents.h"

namespace krv::bench {

class DocumentApplicationObject final
    : public ApplicationMembers<DocumentApplicationObject, IConnectionPointContainer> {
 public:
    static constexpr IID PublishedId = windows::WordApplicationId;
    static constexpr const wchar_t* DocumentsName = L"Documents";
    static constexpr const char* ClassName = "Word.Application";
    static constexpr CLSID ClassId = KrvDocClassId;
    [[nodiscard]] static OfficeAutomation::Object NewDocumentObject(
        const std::shared_ptr<OfficeAutomation>& automation,
        const std::shared_ptr<OfficeDocument>& document);

    // The automation's application is a DocumentApplication.
    explicit DocumentApplicationObject(const std::shared_ptr<OfficeAutomation>& automation);
    ~DocumentApplicationObject() override { Automation()->SetEventListener(nullptr); }

    static std::span<const Member<DocumentApplicationObject>> Members();

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return m_events.Enumerate(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        return m_events.Find(id, point);
    }

 private:
    _variant_t GetActiveDocument(const MemberCall&);
    _variant_t GetSystem(const MemberCall&);
    _variant_t GetTemplate(const MemberCall&);
    _variant_t GetTemplates(const MemberCall&);
    _variant_t CustomizationContext(const MemberCall& call);
    _variant_t StatusBar(const MemberCall& call);
    void Raise(OfficeEvent event, const OfficeAutomation::Object& document,
               bool& isCancelled) const;

    windows::EventSource m_events;
};

}  // namespace krv::bench
