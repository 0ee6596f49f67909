#include "bench/book/BookApplication.h"

#include "bench/book/BookErrors.h"

namespace krv::bench {

BookApplication::BookApplication() : OfficeApplication(BookTraits()) {}

BookRange BookApplication::Range(const std::string& text) const {
    const auto book = ActiveBook();
    if (!book) {
        throw ApplicationError("No workbook is open.");
    }
    return {book, book->ResolveRange(text)};
}

void BookApplication::SetScreenUpdating(bool isUpdating) {
    Change(m_isScreenUpdating, isUpdating, OfficeChange::ScreenUpdating);
}

}  // namespace krv::bench
