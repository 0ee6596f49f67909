// BookAutomation: what the automation objects of krvbook share: its books, too, have one object
// each.
#pragma once

#include <map>
#include <memory>

#include "bench/book/BookApplication.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

class BookAutomation final : public OfficeAutomation,
                             public std::enable_shared_from_this<BookAutomation> {
 public:
    // Both outlive the call of End.
    BookAutomation(BookApplication& application, ProgramWindow& window)
        : OfficeAutomation(application, window, "krvbook"), m_application(application) {}

    // Lets go of objects whose books are closed. To be called whenever the open books change.
    void ForgetClosedBooks();
    void End() noexcept override;

    // Throws Error 424 after the end.
    [[nodiscard]] BookApplication& Application() const;
    // One object for each workbook, so that callers can compare them; null for null.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ObjectOf(const std::shared_ptr<Workbook>& book);
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> ObjectOf(const Workbook& book);

 private:
    [[nodiscard]] std::shared_ptr<Workbook> OpenBook(const Workbook& book) const;

    BookApplication& m_application;
    std::map<const Workbook*, Microsoft::WRL::ComPtr<IDispatch>> m_books;
};

}  // namespace krv::bench
