// ApplicationObject: the automation object of the application, shaped like Excel's, with its
// workbook events. Late-bound only: it answers for Excel's application interface with IDispatch, so
// that hosts of add-ins can be told apart, and offers no vtable beyond that.
#pragma once

#include <memory>

#include "bench/shared/windows/AutomationObject.h"
#include "windows/automation/ConnectionPoint.h"

namespace krv::bench {

inline constexpr IID ExcelApplicationId{
    0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID ExcelEventsId{
    0x00024413, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

namespace ExcelEvent {
inline constexpr DISPID WorkbookActivate = 0x620;
inline constexpr DISPID WorkbookDeactivate = 0x621;
}  // namespace ExcelEvent

class ApplicationObject final
    : public AutomationObject<ApplicationObject, IConnectionPointContainer>,
      private BookObserver {
 public:
    // Observes the application until End or its own end.
    explicit ApplicationObject(const std::shared_ptr<BookAutomation>& automation);
    ~ApplicationObject() override;
    // Before the application goes: no more events, and no use of the application.
    void End();

    static std::span<const Member<ApplicationObject>> Members();

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return m_events.Enumerate(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        return m_events.Find(id, point);
    }

 protected:
    void* FindInterface(REFIID id) noexcept override;

 private:
    friend class AutomationObject<ApplicationObject, IConnectionPointContainer>;
    void OnWorkbookActivate(Workbook& activated) override;
    void OnWorkbookDeactivate(Workbook& deactivated) override;
    void OnChanged(BookChange change) override;
    void Raise(DISPID event, const Workbook& book);

    _variant_t GetName(const MemberCall&) { return AsVariant(std::string("krvbook")); }
    _variant_t GetVersion(const MemberCall&) { return AsVariant(std::string("1.0")); }
    _variant_t GetActiveWorkbook(const MemberCall&);
    _variant_t GetActiveSheet(const MemberCall&);
    _variant_t GetActiveCell(const MemberCall&);
    _variant_t GetSelection(const MemberCall&);
    _variant_t GetWorkbooks(const MemberCall&);
    _variant_t GetCommandBars(const MemberCall&);
    _variant_t GetAddIns(const MemberCall&);
    _variant_t Range(const MemberCall& call);
    _variant_t GetCells(const MemberCall&);
    _variant_t StatusBar(const MemberCall& call);
    _variant_t DisplayStatusBar(const MemberCall& call);
    _variant_t Cursor(const MemberCall& call);
    _variant_t ScreenUpdating(const MemberCall& call);
    _variant_t InchesToPoints(const MemberCall& call);
    _variant_t Visible(const MemberCall& call);
    _variant_t GetHwnd(const MemberCall&);
    _variant_t Quit(const MemberCall&);

    windows::EventSource m_events;
    bool m_isObserving = true;
};

}  // namespace krv::bench
