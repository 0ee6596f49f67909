#include "bench/book/windows/BookAutomation.h"

#include <algorithm>

#include "bench/book/windows/WorkbookObjects.h"

namespace krv::bench {

void BookAutomation::End() noexcept {
    m_books.clear();
    OfficeAutomation::End();
}

BookApplication& BookAutomation::Application() const {
    RequireRunning();
    return m_application;
}

Microsoft::WRL::ComPtr<IDispatch> BookAutomation::ObjectOf(const std::shared_ptr<Workbook>& book) {
    if (!book) {
        return nullptr;
    }
    auto& object = m_books[book.get()];
    if (!object) {
        object = NewWorkbookObject(shared_from_this(), book);
    }
    return object;
}

Microsoft::WRL::ComPtr<IDispatch> BookAutomation::ObjectOf(const Workbook& book) {
    return ObjectOf(OpenBook(book));
}

std::shared_ptr<Workbook> BookAutomation::OpenBook(const Workbook& book) const {
    const auto& books = Application().Books();
    const auto found = std::find_if(books.begin(), books.end(),
                                    [&](const auto& open) { return open.get() == &book; });
    return found == books.end() ? nullptr : *found;
}

void BookAutomation::ForgetClosedBooks() {
    std::erase_if(m_books, [this](const auto& entry) { return !OpenBook(*entry.first); });
}

}  // namespace krv::bench
