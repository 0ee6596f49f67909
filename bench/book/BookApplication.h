// BookApplication: the workbook application without its window: open workbooks, which of them is
// active, cursor. Its observers show it and pass its events on; one thread's.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/book/BookRange.h"
#include "bench/book/Workbook.h"
#include "bench/shared/OfficeApplication.h"

namespace krv::bench {

class BookObserver {
 public:
    virtual ~BookObserver() = default;
    virtual void OnWorkbookActivate(Workbook& activated) = 0;
    virtual void OnWorkbookDeactivate(Workbook& deactivated) = 0;
    virtual void OnChanged(BookChange change) = 0;
    // A file has been opened; its book is active.
    virtual void OnOpened(Workbook& /*opened*/) {}
    // Time to put into the book what its file should keep. An Error ends the saving.
    virtual void OnSaving(Workbook& /*book*/) {}
};

class BookApplication final : public OfficeApplication {
 public:
    static constexpr std::int32_t DefaultCursor = -4143;
    static constexpr std::int32_t WaitCursor = 2;

    BookApplication() = default;

    // Observers outlive their registration.
    void AddObserver(BookObserver& observer);
    void RemoveObserver(BookObserver& observer);

    [[nodiscard]] const std::vector<std::shared_ptr<Workbook>>& Books() const { return m_books; }
    // Null when none is open.
    [[nodiscard]] std::shared_ptr<Workbook> ActiveBook() const { return m_active; }
    // Each opens a book and activates it. Opening a file that is open already activates its book;
    // another file of the same name is Error 1004, since a name stands for one book.
    std::shared_ptr<Workbook> Add();
    std::shared_ptr<Workbook> Open(const std::string& path);
    void Activate(const std::shared_ptr<Workbook>& book);
    // The next book becomes active. Unsaved changes are given up.
    void Close(const std::shared_ptr<Workbook>& book);
    // Under the name of another open book: Error 1004.
    void SaveAs(Workbook& book, const std::string& path);
    // Each throws Error 9 when there is none. Positions count from 1.
    [[nodiscard]] std::shared_ptr<Workbook> BookAt(std::int64_t position) const;
    [[nodiscard]] std::shared_ptr<Workbook> BookByName(const std::string& name) const;

    // In the active book. Throws Error 1004 when there is none or the text is no range.
    [[nodiscard]] BookRange Range(const std::string& text) const;
    [[nodiscard]] BookRange SelectedRange() const;

    [[nodiscard]] std::int32_t Cursor() const { return m_cursor; }
    // Throws Error 1004 for a number that is none of the application's cursors.
    void SetCursor(std::int32_t cursor);
    [[nodiscard]] bool IsScreenUpdating() const { return m_isScreenUpdating; }
    void SetScreenUpdating(bool isUpdating);

 private:
    void OnStatusBarChanged() override { Notify(BookChange::StatusBar); }
    void OnCommandBarsChanged() override { Notify(BookChange::CommandBars); }
    std::shared_ptr<Workbook> Take(std::shared_ptr<Workbook> book);
    [[nodiscard]] std::shared_ptr<Workbook> FindBook(const std::string& name) const;
    [[nodiscard]] Workbook& RequireActive() const;
    void Notify(BookChange change);
    void Tell(const std::function<void(BookObserver&)>& what);
    template <class Field, class Given>
    void Change(Field& field, const Given& value, BookChange change);

    std::vector<BookObserver*> m_observers;
    std::vector<std::shared_ptr<Workbook>> m_books;
    std::shared_ptr<Workbook> m_active;
    std::int32_t m_booksAdded = 0;
    bool m_isScreenUpdating = true;
    std::int32_t m_cursor = DefaultCursor;
};

}  // namespace krv::bench
