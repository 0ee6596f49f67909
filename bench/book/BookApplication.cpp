#include "bench/book/BookApplication.h"

#include <algorithm>
#include <utility>

#include "bench/book/BookErrors.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr std::int32_t ArrowCursor = 1;
constexpr std::int32_t InsertionCursor = 3;

Error NameIsTaken(const std::string& name) {
    return ApplicationError("A workbook named '" + name +
                            "' is already open.  Two workbooks can't have the same name, even if "
                            "they are in different folders.");
}

}  // namespace

void BookApplication::AddObserver(BookObserver& observer) {
    m_observers.push_back(&observer);
}

void BookApplication::RemoveObserver(BookObserver& observer) {
    std::erase(m_observers, &observer);
}

std::shared_ptr<Workbook> BookApplication::Add() {
    std::string name;
    do {
        name = "Book" + std::to_string(++m_booksAdded);
    } while (FindBook(name));
    return Take(std::make_shared<Workbook>(name, [this](BookChange change) { Notify(change); }));
}

std::shared_ptr<Workbook> BookApplication::Open(const std::string& path) {
    if (const auto open = FindBook(FileNameOf(path))) {
        if (!EqualIgnoringCase(open->FullName(), path)) {
            throw NameIsTaken(open->Name());
        }
        Activate(open);
        return open;
    }
    const auto book = Take(Workbook::Load(path, [this](BookChange change) { Notify(change); }));
    Tell([&](BookObserver& observer) { observer.OnOpened(*book); });
    return book;
}

std::shared_ptr<Workbook> BookApplication::Take(std::shared_ptr<Workbook> book) {
    m_books.push_back(book);
    Activate(book);
    return book;
}

void BookApplication::Activate(const std::shared_ptr<Workbook>& book) {
    if (book == m_active) {
        return;
    }
    const std::shared_ptr<Workbook> before = std::exchange(m_active, book);
    if (before) {
        Tell([&](BookObserver& observer) { observer.OnWorkbookDeactivate(*before); });
    }
    if (book) {
        Tell([&](BookObserver& observer) { observer.OnWorkbookActivate(*book); });
    }
    Notify(BookChange::Books);
}

void BookApplication::Close(const std::shared_ptr<Workbook>& book) {
    const std::shared_ptr<Workbook> kept = book;
    const auto found = std::find(m_books.begin(), m_books.end(), kept);
    if (found == m_books.end()) {
        return;
    }
    // An observer of the deactivation still finds the book among the open ones.
    if (kept == m_active) {
        const bool isLast = found + 1 == m_books.end();
        const auto next = !isLast ? *(found + 1) : m_books.size() > 1 ? *(found - 1) : nullptr;
        Activate(next);
    }
    std::erase(m_books, kept);
    Notify(BookChange::Books);
}

void BookApplication::SaveAs(Workbook& book, const std::string& path) {
    const auto other = FindBook(FileNameOf(path));
    if (other && other.get() != &book) {
        throw NameIsTaken(other->Name());
    }
    Tell([&](BookObserver& observer) { observer.OnSaving(book); });
    book.SaveAs(path);
}

std::shared_ptr<Workbook> BookApplication::BookAt(std::int64_t position) const {
    if (position < 1 || position > static_cast<std::int64_t>(m_books.size())) {
        throw Error(ErrorNumber::SubscriptOutOfRange);
    }
    return m_books[static_cast<std::size_t>(position - 1)];
}

std::shared_ptr<Workbook> BookApplication::BookByName(const std::string& name) const {
    if (auto book = FindBook(name)) {
        return book;
    }
    throw Error(ErrorNumber::SubscriptOutOfRange);
}

std::shared_ptr<Workbook> BookApplication::FindBook(const std::string& name) const {
    const auto found = std::find_if(m_books.begin(), m_books.end(), [&](const auto& book) {
        return EqualIgnoringCase(book->Name(), name);
    });
    return found == m_books.end() ? nullptr : *found;
}

BookRange BookApplication::Range(const std::string& text) const {
    return {m_active, RequireActive().ResolveRange(text)};
}

BookRange BookApplication::SelectedRange() const {
    return {m_active, RequireActive().Selected().Areas()};
}

Workbook& BookApplication::RequireActive() const {
    if (!m_active) {
        throw ApplicationError("No workbook is open.");
    }
    return *m_active;
}

void BookApplication::SetCursor(std::int32_t cursor) {
    if (cursor != DefaultCursor && (cursor < ArrowCursor || cursor > InsertionCursor)) {
        throw ApplicationError("Unable to set the Cursor property of the Application class");
    }
    Change(m_cursor, cursor, BookChange::Cursor);
}

void BookApplication::SetScreenUpdating(bool isUpdating) {
    Change(m_isScreenUpdating, isUpdating, BookChange::ScreenUpdating);
}

void BookApplication::Notify(BookChange change) {
    Tell([change](BookObserver& observer) { observer.OnChanged(change); });
}

// Observers may come and go meanwhile.
void BookApplication::Tell(const std::function<void(BookObserver&)>& what) {
    const std::vector<BookObserver*> observers = m_observers;
    for (BookObserver* observer : observers) {
        what(*observer);
    }
}

template <class Field, class Given>
void BookApplication::Change(Field& field, const Given& value, BookChange change) {
    if (field != value) {
        field = value;
        Notify(change);
    }
}

}  // namespace krv::bench
