#include "bench/book/windows/WorkbookObjects.h"

#include <array>
#include <utility>

#include "bench/book/BookErrors.h"
#include "bench/book/windows/RangeObject.h"
#include "bench/book/windows/SheetShapes.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/CollectionObject.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ObjectRequired = 424;

// What both a workbook and its worksheet hold on to.
class BookReference {
 public:
    explicit BookReference(const std::shared_ptr<Workbook>& book) : m_book(book) {}

    [[nodiscard]] std::shared_ptr<Workbook> Book() const {
        std::shared_ptr<Workbook> book = m_book.lock();
        if (!book) {
            throw Error(ObjectRequired, "The workbook has been closed.");
        }
        return book;
    }

 private:
    std::weak_ptr<Workbook> m_book;
};

// The file's path from the root, as the system writes it.
std::string FullPath(const std::string& path) {
    const std::wstring wide = windows::ToWide(path);
    std::array<wchar_t, 32768> buffer;
    const DWORD length =
        GetFullPathNameW(wide.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    return length == 0 || length >= buffer.size() ? path : windows::ToUtf8({buffer.data(), length});
}

class WorksheetObject final : public AutomationObject<WorksheetObject> {
 public:
    WorksheetObject(std::shared_ptr<BookAutomation> automation,
                    const std::shared_ptr<Workbook>& book)
        : AutomationObject(std::move(automation)), m_reference(book) {}

    static std::span<const Member<WorksheetObject>> Members() {
        using Own = WorksheetObject;
        static constexpr std::array<Member<Own>, 7> Table{
            {{L"Name", &Own::GetName},
             {L"Shapes", &Own::GetShapes},
             {L"Range", &Own::Range, MemberKind::ReadOnly, L"Cell1,Cell2"},
             {L"Cells", &Own::GetCells},
             {L"Parent", &Own::GetParent},
             {L"Activate", &Own::Activate, MemberKind::Method},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class AutomationObject<WorksheetObject>;
    _variant_t GetName(const MemberCall&) { return AsVariant(m_reference.Book()->SheetName()); }
    _variant_t Range(const MemberCall& call) {
        return NewRange(Automation(), RangeFromCall(call, m_reference.Book(), "_Worksheet"));
    }
    _variant_t GetCells(const MemberCall&) {
        return NewRange(Automation(), BookRange(m_reference.Book(), {WholeSheet}));
    }
    _variant_t GetShapes(const MemberCall&) {
        return NewSheetShapes(Automation(), m_reference.Book());
    }
    _variant_t GetParent(const MemberCall&) {
        return Give(Automation()->ObjectOf(m_reference.Book()));
    }
    _variant_t Activate(const MemberCall&) {
        Application().Activate(m_reference.Book());
        return {};
    }

    BookReference m_reference;
};

class WorkbookObject final : public AutomationObject<WorkbookObject> {
 public:
    WorkbookObject(std::shared_ptr<BookAutomation> automation,
                   const std::shared_ptr<Workbook>& book)
        : AutomationObject(std::move(automation)), m_reference(book) {}

    static std::span<const Member<WorkbookObject>> Members() {
        using Own = WorkbookObject;
        static constexpr std::array<Member<Own>, 10> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"FullName", &Own::GetFullName},
             {L"Application", &Own::GetApplication},
             {L"Parent", &Own::GetApplication},
             {L"ActiveSheet", &Own::GetActiveSheet},
             {L"Saved", &Own::GetSaved},
             {L"Activate", &Own::Activate, MemberKind::Method},
             {L"Close", &Own::Close, MemberKind::Method, L"SaveChanges,Filename,RouteWorkbook"},
             {L"Save", &Own::Save, MemberKind::Method},
             {L"SaveAs", &Own::SaveAs, MemberKind::Method, L"Filename,FileFormat"}}};
        return Table;
    }

 private:
    friend class AutomationObject<WorkbookObject>;
    _variant_t GetName(const MemberCall&) { return AsVariant(m_reference.Book()->Name()); }
    _variant_t GetFullName(const MemberCall&) { return AsVariant(m_reference.Book()->FullName()); }
    _variant_t GetActiveSheet(const MemberCall&) {
        return NewWorksheet(Automation(), m_reference.Book());
    }
    _variant_t GetSaved(const MemberCall&) { return AsVariant(!m_reference.Book()->IsModified()); }
    _variant_t Activate(const MemberCall&) {
        Application().Activate(m_reference.Book());
        return {};
    }
    // Never asks: without SaveChanges nothing is saved.
    _variant_t Close(const MemberCall& call) {
        const std::shared_ptr<Workbook> book = m_reference.Book();
        if (call.Flag(0, false)) {
            SaveUnder(*book, call.Has(1) ? FullPath(call.Text(1)) : book->FullName());
        }
        Application().Close(book);
        return {};
    }
    _variant_t Save(const MemberCall&) {
        const std::shared_ptr<Workbook> book = m_reference.Book();
        if (!book->HasFile()) {
            throw MethodFailed("Save", "_Workbook");
        }
        SaveUnder(*book, book->FullName());
        return {};
    }
    _variant_t SaveAs(const MemberCall& call) {
        SaveUnder(*m_reference.Book(), FullPath(call.Text(0)));
        return {};
    }
    void SaveUnder(Workbook& book, const std::string& path) {
        try {
            Application().SaveAs(book, path);
        } catch (const Error& error) {
            throw ApplicationError(error.Description());
        }
    }

    BookReference m_reference;
};

class WorkbooksObject final : public AutomationObject<WorkbooksObject> {
 public:
    using AutomationObject::AutomationObject;

    static std::span<const Member<WorkbooksObject>> Members() {
        using Own = WorkbooksObject;
        static constexpr std::array<Member<Own>, 6> Table{
            {{L"Item", &Own::Item, MemberKind::ReadOnly, L"Index", true},
             {L"Count", &Own::GetCount},
             {L"Open", &Own::Open, MemberKind::Method, L"Filename"},
             {L"Add", &Own::Add, MemberKind::Method, L"Template"},
             {L"Application", &Own::GetApplication},
             {L"_NewEnum", &Own::Enumerate, MemberKind::ReadOnly, {}, false, DISPID_NEWENUM}}};
        return Table;
    }

 private:
    friend class AutomationObject<WorkbooksObject>;
    _variant_t ItemFor(const _variant_t& key) {
        return Give(Automation()->ObjectOf(V_VT(&key) == VT_BSTR
                                               ? Application().BookByName(TextIn(key))
                                               : Application().BookAt(NumberIn(key))));
    }
    std::int32_t Size() { return static_cast<std::int32_t>(Application().Books().size()); }

    _variant_t Item(const MemberCall& call) { return ItemFor(call.Argument(0)); }
    _variant_t GetCount(const MemberCall&) { return AsVariant(Size()); }
    _variant_t Open(const MemberCall& call) {
        try {
            return Give(Automation()->ObjectOf(Application().Open(FullPath(call.Text(0)))));
        } catch (const Error& error) {
            throw ApplicationError(error.Description());
        }
    }
    _variant_t Add(const MemberCall&) { return Give(Automation()->ObjectOf(Application().Add())); }
    _variant_t Enumerate(const MemberCall&) {
        return EnumeratorOf(
            {[this] { return Size(); }, [this](const _variant_t& key) { return ItemFor(key); }});
    }
};

}  // namespace

Microsoft::WRL::ComPtr<IDispatch> NewWorkbookObject(std::shared_ptr<BookAutomation> automation,
                                                    const std::shared_ptr<Workbook>& book) {
    return windows::MakeCom<WorkbookObject>(std::move(automation), book);
}

_variant_t NewWorkbooks(const std::shared_ptr<BookAutomation>& automation) {
    return _variant_t(static_cast<IDispatch*>(windows::MakeCom<WorkbooksObject>(automation).Get()));
}

_variant_t NewWorksheet(const std::shared_ptr<BookAutomation>& automation,
                        const std::shared_ptr<Workbook>& book) {
    return _variant_t(
        static_cast<IDispatch*>(windows::MakeCom<WorksheetObject>(automation, book).Get()));
}

}  // namespace krv::bench
