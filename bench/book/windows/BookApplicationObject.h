// BookApplicationObject: the automation object of krvbook, shaped like Excel's, with its workbook
// events.
#pragma once

#include <memory>

#include "bench/book/BookApplication.h"
#include "bench/shared/windows/ActiveRegistration.h"
#include "bench/shared/windows/ApplicationMembers.h"
#include "windows/automation/ConnectionPoint.h"

namespace krv::bench {

inline constexpr IID ExcelEventsId{
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

namespace ExcelEvent {
inline constexpr DISPID WorkbookActivate = 0x620;
inline constexpr DISPID WorkbookDeactivate = 0x621;
}  // namespace ExcelEvent

class BookApplicationObject final
    : public ApplicationMembers<BookApplicationObject, IConnectionPointContainer> {
 public:
    static constexpr IID PublishedId{
        0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    static constexpr const char* AddInName = "KRV.XLA";
    static constexpr const char* ClassName = "Excel.Application";
    static constexpr CLSID ClassId = KrvBookClassId;
    [[nodiscard]] static OfficeAutomation::Object NewDocumentObject(
        const std::shared_ptr<OfficeAutomation>& automation,
        const std::shared_ptr<OfficeDocument>& document);

    // The automation's application is a BookApplication.
    explicit BookApplicationObject(const std::shared_ptr<OfficeAutomation>& automation);
    ~BookApplicationObject() override { Automation()->SetActivationListener(nullptr); }

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

    windows::EventSource m_events;
};

}  // namespace krv::bench
