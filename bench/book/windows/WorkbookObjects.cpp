#include "bench/book/windows/WorkbookObjects.h"

#include "bench/book/Workbook.h"
#include "bench/shared/windows/DocumentObjects.h"
#include "bench/shared/windows/ShapeObjects.h"

namespace krv::bench {
namespace {

class WorksheetObject final : public AutomationObject<WorksheetObject> {
 public:
    WorksheetObject(std::shared_ptr<OfficeAutomation> automation,
                    std::weak_ptr<OfficeDocument> book)
        : AutomationObject(std::move(automation)), m_book(std::move(book)) {}

    static std::span<const Member<WorksheetObject>> Members() {
        using Own = WorksheetObject;
        static constexpr std::array<Member<Own>, 4> Table{{{L"Name", &Own::GetName},
                                                           {L"Parent", &Own::GetParent},
                                                           {L"Shapes", &Own::GetShapes},
                                                           {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetName(const MemberCall&) {
        const auto document = Automation()->RequireOpen(m_book);
        return AsVariant(std::static_pointer_cast<Workbook>(document)->SheetName());
    }
    _variant_t GetShapes(const MemberCall&) {
        return NewShapes(Automation(), Automation()->RequireOpen(m_book));
    }
    _variant_t GetParent(const MemberCall&) {
        return AsVariant(Automation()->ObjectOf(m_book.lock()).Get());
    }

    std::weak_ptr<OfficeDocument> m_book;
};

class WorkbookObject final : public DocumentMembers<WorkbookObject> {
 public:
    static constexpr IID PublishedId{
        0x000208DA, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    using DocumentMembers::DocumentMembers;

    static std::span<const Member<WorkbookObject>> Members() {
        using Own = WorkbookObject;
        static constexpr auto Table =
            Joined(Rows(), std::array<Member<Own>, 1>{{{L"ActiveSheet", &Own::GetActiveSheet}}});
        return Table;
    }

 private:
    _variant_t GetActiveSheet(const MemberCall&) { return NewWorksheet(Automation(), Document()); }
};

}  // namespace

OfficeAutomation::Object NewWorkbookObject(const std::shared_ptr<OfficeAutomation>& automation,
                                           const std::shared_ptr<OfficeDocument>& book) {
    return windows::MakeCom<WorkbookObject>(automation, book);
}

_variant_t NewWorksheet(const std::shared_ptr<OfficeAutomation>& automation,
                        const std::shared_ptr<OfficeDocument>& book) {
    return NewObject<WorksheetObject>(automation, book);
}

}  // namespace krv::bench
