// BookApplicationObject: the automation object of krvbook, shaped like Excel's, with its workbook
// events.
#pragma once

#include <memory>

#include "bench/book/BookApplication.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ApplicationMembers.h"
#include "bench/shared/windows/CancelArgument.h"
#include "windows/automation/ConnectionPoint.h"
#include "windows/extensibility/OfficeEvents.h"

namespace krv::bench {

class BookApplicationObject final
    : public ApplicationMembers<BookApplicationObject, IConnectionPointContainer> {
 public:
    static constexpr IID PublishedId = windows::ExcelApplicationId;
    static constexpr const wchar_t* DocumentsName = L"Workbooks";
    static constexpr const char* ClassName = "Excel.Application";
    static constexpr CLSID ClassId = KrvBookClassId;
    [[nodiscard]] static OfficeAutomation::Object NewDocumentObject(
        const std::shared_ptr<OfficeAutomation>& automation,
        const std::shared_ptr<OfficeDocument>& document);

    // The automation's application is a BookApplication.
    explicit BookApplicationObject(const std::shared_ptr<OfficeAutomation>& automation);
    ~BookApplicationObject() override { Automation()->SetEventListener(nullptr); }

    static std::span<const Member<BookApplicationObject>> Members();

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return m_events.Enumerate(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        return m_events.Find(id, point);
    }

 private:
    [[nodiscard]] BookApplication& Books() const {
        return static_cast<BookApplication&>(Application());
    }
    _variant_t GetActiveWorkbook(const MemberCall&);
    _variant_t GetActiveSheet(const MemberCall&);
    _variant_t GetActiveCell(const MemberCall&);
    _variant_t GetSelection(const MemberCall&);
    _variant_t Range(const MemberCall& call);
    _variant_t GetCells(const MemberCall&);
    _variant_t StatusBar(const MemberCall& call);
    _variant_t ScreenUpdating(const MemberCall& call);
    _variant_t InchesToPoints(const MemberCall& call);

    // True when a receiver has cancelled what follows.
    void Raise(OfficeEvent event, const OfficeAutomation::Object& book, bool& isCancelled) const;

    windows::EventSource m_events;
};

}  // namespace krv::bench
